#pragma once

#include "gui/Control.h"
#include "gui/Text.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace gui {

/// A plain push button.
class DialogButton : public Control {
public:
    DialogButton(UserInterface& ui, Control* parent, const std::string& label, std::function<void()> pressed);
    /// The one that Enter presses.
    void SetDefault(bool is);
    /// Draws it as what a menu of choices opens from, with the chosen one as its label.
    void SetShowsChoice(bool shows);
    void SetLabel(const std::string& label);
    void PaintContent(Canvas& canvas) override;
    void Clicked() override;
    void MouseDown(int button, Point point, int flags) override;
    void MouseUp(int button, Point point, int flags) override;

private:
    std::unique_ptr<Text> text;
    std::function<void()> action;
    bool isDefault = false;
    bool showsChoice = false;
    bool isDown = false;
};

/// Lines of text, wrapped at a width; "\n" parts paragraphs.
class DialogText : public Control {
public:
    DialogText(UserInterface& ui, Control* parent, const std::string& string, float maxWidth);
    void PaintContent(Canvas& canvas) override;

private:
    std::vector<std::unique_ptr<Text>> lines;
};

/// A list to choose one entry from, by a click or with the arrow keys; a double-click opens it. What is
/// longer scrolls by wheel and at its right edge.
class DialogList : public Control {
public:
    struct Entry {
        std::string text;
        bool isFolder = false;
    };

    DialogList(UserInterface& ui, Control* parent);
    std::function<void(int index)> OnSelected;
    std::function<void(int index)> OnOpened;

    /// The selected entry stays so where it is there still. Nobody hears of it.
    void SetEntries(std::vector<Entry> newEntries);
    const std::vector<Entry>& Entries() const { return entries; }
    int Selected() const { return selected; }
    void Select(int index);  // -1 for none; into view
    int RowsPerPage() const;

    void PaintContent(Canvas& canvas) override;
    void MouseDown(int button, Point point, int flags) override;
    void MouseMoved(Point point, int flags) override;
    void MouseUp(int button, Point point, int flags) override;
    void DoubleClicked() override;
    bool WheelDelta(Point point, int flags, float delta, Orientation axis) override;

private:
    int RowAt(Point point) const;
    void ScrollTo(float wanted);
    float ContentHeight() const;
    /// What the mouse scrolls by, at the right; empty where everything is in view.
    Rect Thumb() const;

    std::vector<Entry> entries;
    std::unique_ptr<Text> text;
    int selected = -1;
    float offset = 0.0f;
    bool dragsThumb = false;
    float thumbGrip = 0.0f;  // from its top to the mouse that holds it
};

}  // namespace gui
