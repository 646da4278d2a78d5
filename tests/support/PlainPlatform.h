#pragma once

#include "gui/FileDialogs.h"
#include "gui/PlatformDelegate.h"
#include "gui/PopupMenu.h"
#include "gui/Text.h"
#include "gui/TextEditor.h"

#include <string>

/// A platform without dialogs, menus and fonts.
class PlainPlatform : public gui::PlatformDelegate {
public:
    std::unique_ptr<gui::OpenSaveDialog> CreateOpenSaveDialog() override { return nullptr; }
    std::unique_ptr<gui::PopupMenu> CreatePopupMenu() override { return nullptr; }
    std::unique_ptr<gui::SelectFolderDialog> CreateSelectFolderDialog() override { return nullptr; }
    std::unique_ptr<gui::Text> CreateText() override { return nullptr; }
    std::unique_ptr<gui::TextEditor> CreateTextEditor() override { return nullptr; }
    gui::Point GetScreenSize() override { return {1024, 768}; }
    std::string GetClipboardText() override { return clipboard; }
    int GetDoubleClickDistance() override { return 5; }
    int GetDoubleClickTime() override { return 400; }
    void SetClipboardText(const std::string& text) override { clipboard = text; }
    void ShowMessageBox(const std::string&, int, const std::function<void()>&) override {}

private:
    std::string clipboard;
};
