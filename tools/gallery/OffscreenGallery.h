#pragma once

#include "gallery/Gallery.h"
#include "gallery/GalleryScript.h"
#include "gui/OffscreenInterface.h"

#include <memory>
#include <vector>

namespace gallery {

/// A gallery without a window, on a virtual clock. Thread: one.
class OffscreenGallery {
public:
    explicit OffscreenGallery(float scale);
    ~OffscreenGallery();

    void ShowPage(int index);
    /// What the window would show now.
    const gui::Bitmap& Picture();
    /// The same, all of it painted anew.
    void PaintWhole(gui::Bitmap& bitmap);
    /// The page as it is shown to people: opened, and given its time.
    const gui::Bitmap& StillPicture(int page);
    /// Throws GalleryError where a shot can't be written.
    void Play(std::vector<ScriptStep> steps);
    gui::OffscreenInterface& Ui() { return *ui; }

private:
    std::unique_ptr<gui::OffscreenInterface> ui;
    std::unique_ptr<Gallery> gallery;
};

}  // namespace gallery
