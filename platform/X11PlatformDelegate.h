#pragma once

#include "gui/PlatformDelegate.h"

namespace gui {

class X11Interface;

/// Makes the parts of the platform that belong to one interface.
class X11PlatformDelegate : public PlatformDelegate {
public:
    /// Before anything else is asked of it.
    void Attach(X11Interface& ui) { interface = &ui; }

    std::unique_ptr<OpenSaveDialog> CreateOpenSaveDialog() override;
    std::unique_ptr<PopupMenu> CreatePopupMenu() override;
    std::unique_ptr<SelectFolderDialog> CreateSelectFolderDialog() override;
    std::unique_ptr<Text> CreateText() override;
    std::unique_ptr<TextEditor> CreateTextEditor() override;
    Point GetScreenSize() override;
    std::string GetClipboardText() override;
    int GetDoubleClickDistance() override;
    int GetDoubleClickTime() override;
    void SetClipboardText(const std::string& text) override;
    void ShowMessageBox(const std::string& text, int flags, const std::function<void()>& confirmed) override;

private:
    X11Interface* interface = nullptr;
};

}  // namespace gui
