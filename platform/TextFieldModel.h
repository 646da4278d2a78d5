#pragma once

#include <string>
#include <vector>

namespace gui {

/// The text of a one-line field with its caret and selection. Places count code points.
class TextFieldModel {
public:
    enum class Step { Character, Word, End };

    /// Replaces everything; damaged UTF-8 ends the text, and control characters are left out.
    void SetText(const std::string& utf8);
    std::string Text() const { return TextBetween(0, Length()); }
    std::string TextBetween(int first, int last) const;
    std::string SelectedText() const { return TextBetween(SelectionStart(), SelectionEnd()); }
    int Length() const { return static_cast<int>(points.size()); }

    int Caret() const { return caret; }
    int SelectionStart() const { return anchor < caret ? anchor : caret; }
    int SelectionEnd() const { return anchor < caret ? caret : anchor; }
    bool HasSelection() const { return anchor != caret; }
    /// The caret stands at `last`; -1 is the end.
    void Select(int first, int last);
    void SelectWordAt(int place);
    /// Moves the caret; without `extends` a selection is given up.
    void Move(bool forwards, Step step, bool extends);

    // Each of these can be undone. True if the text changed.
    bool Insert(const std::string& utf8);
    /// The selection, else what lies next to the caret.
    bool Erase(bool forwards, Step step);
    bool Undo();

private:
    struct State {
        std::u32string points;
        int caret;
        int anchor;
    };

    static bool IsWordPoint(char32_t point);
    int Target(bool forwards, Step step) const;
    void EraseSelection();
    void Remember(bool typing);
    int Clamp(int place) const;

    std::u32string points;
    int caret = 0;
    int anchor = 0;  // the other end of the selection
    std::vector<State> undo;
    bool typing = false;  // the last change was typing, which is undone at once
};

}  // namespace gui
