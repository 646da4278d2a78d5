#pragma once

#include "gui/OffscreenInterface.h"
#include "gui/PlatformDelegate.h"

namespace gallery {

/// A platform without a screen: it has text, a clipboard of its own, and neither menus nor dialogs.
class OffscreenPlatform : public gui::PlatformDelegate {
public:
    /// An interface on such a platform.
    /// @param size   logical units
    /// @param scale  one of the levels of gui::DeviceBacking
    static std::unique_ptr<gui::OffscreenInterface> Open(gui::Point size, float scale);

    std::unique_ptr<gui::OpenSaveDialog> CreateOpenSaveDialog() override;
    std::unique_ptr<gui::PopupMenu> CreatePopupMenu() override;
    std::unique_ptr<gui::SelectFolderDialog> CreateSelectFolderDialog() override;
    std::unique_ptr<gui::Text> CreateText() override;
    std::unique_ptr<gui::TextEditor> CreateTextEditor() override;
    gui::Point GetScreenSize() override { return {1024.0f, 768.0f}; }
    std::string GetClipboardText() override { return clipboard; }
    int GetDoubleClickDistance() override { return 4; }
    int GetDoubleClickTime() override { return 400; }
    void SetClipboardText(const std::string& text) override { clipboard = text; }
    void ShowMessageBox(const std::string&, int, const std::function<void()>&) override {}

private:
    gui::DeviceBacking* backing = nullptr;  // of the interface
    std::string clipboard;
};

}  // namespace gallery
