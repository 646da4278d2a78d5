#include "gallery/OffscreenPlatform.h"

#include "gui/FileDialogs.h"
#include "gui/PopupMenu.h"
#include "gui/TextEditor.h"
#include "platform/FreeTypeText.h"

namespace gallery {

std::unique_ptr<gui::OffscreenInterface> OffscreenPlatform::Open(gui::Point size, float scale)
{
    auto platform = std::make_unique<OffscreenPlatform>();
    OffscreenPlatform& attached = *platform;
    auto ui = std::make_unique<gui::OffscreenInterface>(std::move(platform), size, scale);
    attached.backing = &ui->Backing();
    return ui;
}

std::unique_ptr<gui::OpenSaveDialog> OffscreenPlatform::CreateOpenSaveDialog() { return nullptr; }
std::unique_ptr<gui::PopupMenu> OffscreenPlatform::CreatePopupMenu() { return nullptr; }
std::unique_ptr<gui::SelectFolderDialog> OffscreenPlatform::CreateSelectFolderDialog() { return nullptr; }
std::unique_ptr<gui::TextEditor> OffscreenPlatform::CreateTextEditor() { return nullptr; }

std::unique_ptr<gui::Text> OffscreenPlatform::CreateText()
{
    return std::make_unique<gui::FreeTypeText>(*backing);
}

}  // namespace gallery
