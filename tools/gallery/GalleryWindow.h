#pragma once

#include "gallery/GalleryOptions.h"

namespace gallery {

/// Shows the gallery in a window of its own until that is closed or the script has ended. Throws
/// GalleryError.
void RunGalleryWindow(const GalleryOptions& options);

}  // namespace gallery
