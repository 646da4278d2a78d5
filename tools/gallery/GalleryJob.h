#pragma once

#include "gallery/GalleryOptions.h"

#include <ostream>

namespace gallery {

/// Does what the command line asked for. Throws GalleryError.
/// @param progress  where it is told how far it is
void RunGalleryJob(const GalleryOptions& options, std::ostream& out, std::ostream& progress);

}  // namespace gallery
