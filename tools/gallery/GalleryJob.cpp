#include "gallery/GalleryJob.h"

#include "gallery/GalleryError.h"
#include "gallery/GalleryWindow.h"
#include "gallery/OffscreenGallery.h"
#include "gallery/PictureFile.h"
#include "render/ProgressBar.h"

#include <cmath>
#include <string>

#include <unistd.h>

namespace gallery {

namespace {

void WriteAllPages(const GalleryOptions& options, std::ostream& out, std::ostream& progress)
{
    std::error_code error;
    std::filesystem::create_directories(options.folder, error);
    if (error)
        throw GalleryError(options.folder.string() + ": " + error.message());
    OffscreenGallery gallery(options.scale);
    const auto names = Gallery::PageNames();
    const std::string percent = std::to_string(std::lround(options.scale * 100.0f));
    {
        ProgressBar bar(isatty(STDERR_FILENO) ? ProgressBar::Style::Bar : ProgressBar::Style::Lines,
                        progress);
        for (std::size_t i = 0; i < names.size(); ++i) {
            bar.update(static_cast<double>(i) / static_cast<double>(names.size()), names[i]);
            WritePicture(gallery.StillPicture(static_cast<int>(i)),
                         options.folder / (std::string(names[i]) + "-" + percent + ".png"));
        }
    }
    out << names.size() << " pictures in " << options.folder.string() << '\n';
}

}  // namespace

void RunGalleryJob(const GalleryOptions& options, std::ostream& out, std::ostream& progress)
{
    if (!options.folder.empty())
        return WriteAllPages(options, out, progress);
    const bool offscreen = options.offscreen || !options.png.empty();
    if (!offscreen)
        return RunGalleryWindow(options);
    OffscreenGallery gallery(options.scale);
    const gui::Bitmap& still = gallery.StillPicture(options.page);
    if (!options.script.empty())
        gallery.Play(ReadScriptFile(options.script));
    if (!options.png.empty())
        WritePicture(options.script.empty() ? still : gallery.Picture(), options.png);
}

}  // namespace gallery
