#pragma once

#include "gui/ICanvas.h"

#include <filesystem>

namespace gallery {

/// Writes a bitmap as a PNG, over what is there. Throws GalleryError.
void WritePicture(const gui::IBitmap& bitmap, const std::filesystem::path& file);

}  // namespace gallery
