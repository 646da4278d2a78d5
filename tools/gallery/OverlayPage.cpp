#include "gallery/GalleryPage.h"

namespace gallery {

std::unique_ptr<GalleryPage> MakeOverlayPage(const PageParts& parts, gui::Control* parent)
{
    return std::make_unique<GalleryPage>(parts, parent);
}

}  // namespace gallery
