#include "gallery/PictureFile.h"

#include "gallery/GalleryError.h"
#include "render/PendingFile.h"
#include "render/RenderError.h"

#include <cairo.h>

#include <cstdint>
#include <memory>
#include <string>

namespace gallery {

void WritePicture(const gui::IBitmap& bitmap, const std::filesystem::path& file)
{
    const auto size = bitmap.GetSize();
    const std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> surface(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.x, size.y), cairo_surface_destroy);
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS)
        throw GalleryError("there is no memory for a picture of " + std::to_string(size.x) + " x " +
                           std::to_string(size.y));
    const int stride = cairo_image_surface_get_stride(surface.get());
    unsigned char* row = cairo_image_surface_get_data(surface.get());
    const std::uint32_t* pixels = bitmap.GetPixels();
    for (int y = 0; y < size.y; ++y, row += stride, pixels += size.x)
        for (int x = 0; x < size.x; ++x)
            reinterpret_cast<std::uint32_t*>(row)[x] = pixels[x] & 0xFFFFFFu;  // both have rows of 0x..RRGGBB
    cairo_surface_mark_dirty(surface.get());
    try {
        PendingFile pending(file, PendingFile::Existing::Replace);
        const cairo_status_t status = cairo_surface_write_to_png(surface.get(), pending.path().c_str());
        if (status != CAIRO_STATUS_SUCCESS)
            throw GalleryError(file.string() + ": " + cairo_status_to_string(status));
        pending.commit();
    } catch (const RenderError& error) {
        throw GalleryError(error.what());
    }
}

}  // namespace gallery
