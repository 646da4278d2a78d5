#pragma once

#include "foundation/NotifyEvent.h"
#include "gui/Component.h"
#include "gui/Control.h"
#include "gui/Geometry.h"

#include <memory>
#include <string>

namespace gui {

class Text;

/// A one-line text field over the interface, made by the platform. Thread: main.
class TextEditor : public Component {
public:
    enum class TabAction { Event = 0, Ignore = 1 };

    explicit TextEditor(UserInterface& ui);
    ~TextEditor() override;

    Property<gui::Alignment> Alignment{gui::Alignment::Left, this};
    Property<Rect> Bounds{Rect{}, this};  // of the root's
    Property<bool> SelectsAllOnOpen{true, this};
    Property<bool> MultiLine{false, this};
    Property<bool> ReadOnly{false, this};
    Property<bool> Password{false, this};
    Property<bool> CreatesBacking{true, this};
    Property<TextEditor::TabAction> TabAction{TextEditor::TabAction::Event, this};
    NotifyEvent OnChanged;
    NotifyEvent OnReturn;
    NotifyEvent OnEscape;
    NotifyEvent OnTab;
    NotifyEvent OnClosed;

    /// Shows the field at `rect` of the root's with the keyboard's focus. False, and nothing happens, off the
    /// main thread or when it is open.
    bool Open(const std::string& text, const Rect& rect);
    void Close();
    bool IsOpen() const { return open; }
    /// The font of the field: properties as of any text.
    gui::Text& Font() { return *font; }

    virtual std::string GetText() const = 0;  // UTF-8; the last text once it is closed
    virtual void SetText(const std::string& text) = 0;
    /// Code points; the caret stands at `last`. -1 is the end.
    virtual void SetSelection(int first, int last) = 0;
    virtual void SetFocus() = 0;

protected:
    virtual void CreateNative() = 0;
    virtual void DestroyNative() = 0;

    std::unique_ptr<gui::Text> font;
    std::unique_ptr<Control> backing;
    bool open = false;
};

}  // namespace gui
