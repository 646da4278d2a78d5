#include "platform/X11PlatformDelegate.h"

#include "platform/FreeTypeText.h"
#include "platform/PipeSignalGuard.h"
#include "platform/X11Clipboard.h"
#include "platform/X11Control.h"
#include "platform/X11FileDialogs.h"
#include "platform/X11MessageBox.h"
#include "platform/X11PopupMenu.h"
#include "platform/X11TextEditor.h"

#include <cmath>

namespace gui {

namespace {

constexpr Point unknownScreen{1024.0f, 768.0f};
constexpr float titleAndPanel = 165.0f;  // logical units

}  // namespace

std::unique_ptr<OpenSaveDialog> X11PlatformDelegate::CreateOpenSaveDialog()
{
    return std::make_unique<X11OpenSaveDialog>(*interface);
}

std::unique_ptr<PopupMenu> X11PlatformDelegate::CreatePopupMenu()
{
    return std::make_unique<X11PopupMenu>(*interface);
}

std::unique_ptr<SelectFolderDialog> X11PlatformDelegate::CreateSelectFolderDialog()
{
    return std::make_unique<X11SelectFolderDialog>(*interface);
}

std::unique_ptr<Text> X11PlatformDelegate::CreateText()
{
    return std::make_unique<FreeTypeText>(interface->Backing());
}

std::unique_ptr<TextEditor> X11PlatformDelegate::CreateTextEditor()
{
    return std::make_unique<X11TextEditor>(*interface);
}

Point X11PlatformDelegate::GetScreenSize()
{
    const PipeSignalGuard guard;
    const X11Screens::Monitor* monitor =
        interface->IsWindowLost() ? nullptr
                                  : interface->Screens().MonitorOf(interface->Window().ScreenRect());
    if (!monitor)
        return unknownScreen;
    const float scale = interface->Backing().Scale();
    const float height = static_cast<float>(monitor->rect.Height()) - std::floor(scale * titleAndPanel);
    return {static_cast<float>(monitor->rect.Width()) / scale, height / scale};
}

std::string X11PlatformDelegate::GetClipboardText()
{
    const PipeSignalGuard guard;
    return interface->IsWindowLost() ? std::string() : interface->Clipboard().GetText();
}

int X11PlatformDelegate::GetDoubleClickDistance()
{
    return interface->Screens().Settings().doubleClickPixels;
}

int X11PlatformDelegate::GetDoubleClickTime() { return interface->Screens().Settings().doubleClickMs; }

void X11PlatformDelegate::SetClipboardText(const std::string& text)
{
    const PipeSignalGuard guard;
    if (!interface->IsWindowLost())
        interface->Clipboard().SetText(text);
}

void X11PlatformDelegate::ShowMessageBox(const std::string& text, int flags,
                                         const std::function<void()>& confirmed)
{
    if (interface->IsMainThread() && X11MessageBox::Show(*interface, text, flags) && confirmed)
        confirmed();
}

}  // namespace gui
