#include "gallery/OffscreenGallery.h"

#include "gallery/OffscreenPlatform.h"
#include "gallery/PictureFile.h"

namespace gallery {

OffscreenGallery::OffscreenGallery(float scale) : ui(OffscreenPlatform::Open(Gallery::windowSize, scale))
{
    const gui::RootControl::Entry entry(ui->GetRootControl());
    gallery = std::make_unique<Gallery>(*ui);
}

OffscreenGallery::~OffscreenGallery()
{
    const gui::RootControl::Entry entry(ui->GetRootControl());
    gallery.reset();
}

void OffscreenGallery::ShowPage(int index)
{
    const gui::RootControl::Entry entry(ui->GetRootControl());
    gallery->ShowPage(index);
}

const gui::Bitmap& OffscreenGallery::Picture()
{
    ui->Paint();
    return ui->Picture();
}

void OffscreenGallery::PaintWhole(gui::Bitmap& bitmap)
{
    gui::RootControl& root = ui->GetRootControl();
    const gui::RootControl::Entry entry(root);
    bitmap.SetSize(root.GetWidth(), root.GetHeight());
    gui::Canvas& canvas = bitmap.GetCanvas();
    const gui::Canvas::State saved = canvas.Save();
    canvas.Clip.assign(root.GetClientRect());
    root.PaintTree(canvas);
    canvas.Restore(saved);
}

const gui::Bitmap& OffscreenGallery::StillPicture(int page)
{
    ShowPage(page);
    Picture();
    ui->AdvanceTime(static_cast<std::uint32_t>(gallery->Page().StillDelayMs()));
    return Picture();
}

void OffscreenGallery::Play(std::vector<ScriptStep> steps)
{
    const gui::RootControl::Entry entry(ui->GetRootControl());
    ScriptPlayer player(*gallery, std::move(steps),
                        [this](const std::filesystem::path& file) { WritePicture(Picture(), file); });
    for (int wait = player.Advance(); wait >= 0; wait = player.Advance())
        ui->AdvanceTime(static_cast<std::uint32_t>(wait));
}

}  // namespace gallery
