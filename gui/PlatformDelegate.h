#pragma once

#include "gui/Geometry.h"

#include <functional>
#include <memory>
#include <string>

namespace gui {

class OpenSaveDialog;
class PopupMenu;
class SelectFolderDialog;
class Text;
class TextEditor;

/// What the toolkit asks of a platform. Thread: main, unless said otherwise.
class PlatformDelegate {
public:
    /// Bits of a message box's flags.
    struct MessageButton {
        static constexpr int ok = 1;
        static constexpr int cancel = 2;
    };

    virtual ~PlatformDelegate() = default;
    virtual std::unique_ptr<OpenSaveDialog> CreateOpenSaveDialog() = 0;
    virtual std::unique_ptr<PopupMenu> CreatePopupMenu() = 0;
    virtual std::unique_ptr<SelectFolderDialog> CreateSelectFolderDialog() = 0;
    virtual std::unique_ptr<Text> CreateText() = 0;  // thread: main or render, with the root's lock held
    virtual std::unique_ptr<TextEditor> CreateTextEditor() = 0;
    /// Logical units, less what a title and a panel take; 1024 x 768 where it isn't known.
    virtual Point GetScreenSize() = 0;
    virtual std::string GetClipboardText() = 0;  // UTF-8, empty when there is none
    virtual int GetDoubleClickDistance() = 0;    // device pixels
    virtual int GetDoubleClickTime() = 0;        // milliseconds
    virtual void SetClipboardText(const std::string& text) = 0;
    /// Shows a text until a button is pressed, titled "Confirmation" with two buttons, "Information" with
    /// one.
    /// @param confirmed  called, if set, when the answer was OK
    virtual void ShowMessageBox(const std::string& text, int flags,
                                const std::function<void()>& confirmed) = 0;
};

}  // namespace gui
