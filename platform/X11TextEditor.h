#pragma once

#include "gui/TextEditor.h"
#include "platform/TextFieldModel.h"
#include "platform/X11Keyboard.h"

#include <memory>

namespace gui {

class TextField;
class X11Interface;

/// A text field drawn within the interface's own window. It has the keyboard while it is open; a press
/// elsewhere, or another window that takes the keyboard, closes it. One line, whatever `MultiLine` says.
class X11TextEditor : public TextEditor, private X11KeySink {
public:
    explicit X11TextEditor(X11Interface& ui);
    ~X11TextEditor() override;

    /// A press elsewhere, or another window with the keyboard, doesn't close it.
    void SetStaysOpen(bool stays) { staysOpen = stays; }

    std::string GetText() const override { return model.Text(); }
    void SetText(const std::string& text) override;
    void SetSelection(int first, int last) override;
    void SetFocus() override;
    void propertyChanged(AbstractProperty& property) override;

protected:
    void CreateNative() override;
    void DestroyNative() override;

private:
    bool TakeKey(const X11Key& key) override;
    void MousePressed(Point point) override;
    void KeyboardLost() override;
    /// True if the caret moved by the key.
    bool Move(const X11Key& key);
    /// True if the text changed by the key.
    bool Edit(const X11Key& key);
    bool CopySelection();

    X11Interface& interface;
    TextFieldModel model;
    std::unique_ptr<TextField> field;
    bool staysOpen = false;
};

}  // namespace gui
