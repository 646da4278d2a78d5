#include "platform/X11Surface.h"

#include <sys/mman.h>
#include <unistd.h>
#include <xcb/shm.h>

#include <algorithm>
#include <vector>

namespace gui {

X11Surface::X11Surface(X11Connection& display, xcb_window_t target)
    : connection(display),
      window(target),
      context(xcb_generate_id(display)),
      sharing(display.Has().sharedMemory == 2)
{
    const std::uint32_t noExposures = 0;
    xcb_create_gc(connection, context, window, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
}

X11Surface::~X11Surface()
{
    Release();
    xcb_free_gc(connection, context);
}

void X11Surface::Put(const IBitmap& bitmap, const DeviceRect& part)
{
    const BasicPoint<int> size = bitmap.GetSize();
    const DeviceRect whole{0, 0, size.x, size.y};
    const DeviceRect shown = part.Intersected(whole);
    if (shown.IsEmpty() || !bitmap.GetPixels())
        return;
    if (sharing && Reserve(static_cast<std::size_t>(shown.Area()) * 4))
        PutShared(bitmap.GetPixels(), size.x, shown);
    else
        PutThrough(bitmap.GetPixels(), size.x, shown);
}

bool X11Surface::Reserve(std::size_t bytes)
{
    if (bytes <= memoryBytes)
        return true;
    Release();
    const int file = memfd_create("window", MFD_CLOEXEC);
    if (file < 0 || ftruncate(file, static_cast<off_t>(bytes)) != 0) {
        if (file >= 0)
            close(file);
        return sharing = false;
    }
    void* mapped = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (mapped == MAP_FAILED) {
        close(file);
        return sharing = false;
    }
    segment = xcb_generate_id(connection);
    // Takes the descriptor over.
    const X11Reply<xcb_generic_error_t> error(
        xcb_request_check(connection, xcb_shm_attach_fd_checked(connection, segment, file, 1)));
    memory = static_cast<std::uint32_t*>(mapped);
    memoryBytes = bytes;
    if (!error && !connection.IsLost())
        return true;
    Release();
    return sharing = false;
}

void X11Surface::Release()
{
    if (!memory)
        return;
    if (segment)
        xcb_shm_detach(connection, segment);
    munmap(memory, memoryBytes);
    memory = nullptr;
    memoryBytes = 0;
    segment = 0;
    inFlight = false;
}

void X11Surface::PutShared(const std::uint32_t* pixels, int stride, const DeviceRect& part)
{
    // The display answers in order: with this answer it has read the memory.
    if (inFlight)
        X11Reply<xcb_get_input_focus_reply_t>(
            xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    CopyRows(pixels, stride, part, memory);
    const auto width = static_cast<std::uint16_t>(part.Width());
    const auto height = static_cast<std::uint16_t>(part.Height());
    xcb_shm_put_image(connection, window, context, width, height, 0, 0, width, height,
                      static_cast<std::int16_t>(part.left), static_cast<std::int16_t>(part.top),
                      static_cast<std::uint8_t>(connection.WindowVisual().depth), XCB_IMAGE_FORMAT_Z_PIXMAP,
                      0, segment, 0);
    inFlight = true;
}

// As many rows at a time as a request may hold.
void X11Surface::PutThrough(const std::uint32_t* pixels, int stride, const DeviceRect& part)
{
    constexpr std::size_t requestHeader = 64;
    const std::size_t room = std::min<std::size_t>(xcb_get_maximum_request_length(connection), 1u << 18) * 4;
    const std::size_t rowBytes = static_cast<std::size_t>(part.Width()) * 4;
    const int rows = std::max(1, static_cast<int>((room - requestHeader) / rowBytes));
    std::vector<std::uint32_t> band;
    for (int top = part.top; top < part.bottom; top += rows) {
        const DeviceRect slice{part.left, top, part.right, std::min(top + rows, part.bottom)};
        band.resize(static_cast<std::size_t>(slice.Area()));
        CopyRows(pixels, stride, slice, band.data());
        xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, context,
                      static_cast<std::uint16_t>(slice.Width()), static_cast<std::uint16_t>(slice.Height()),
                      static_cast<std::int16_t>(slice.left), static_cast<std::int16_t>(slice.top), 0,
                      static_cast<std::uint8_t>(connection.WindowVisual().depth),
                      static_cast<std::uint32_t>(band.size() * 4),
                      reinterpret_cast<const std::uint8_t*>(band.data()));
    }
}

// The toolkit's top byte is transparency; the display's, where it counts, is opacity.
void X11Surface::CopyRows(const std::uint32_t* pixels, int stride, const DeviceRect& part,
                          std::uint32_t* to) const
{
    const std::uint32_t flip = connection.WindowVisual().depth == 32 ? 0xFF000000u : 0u;
    const auto width = static_cast<std::size_t>(part.Width());
    for (int y = part.top; y < part.bottom; ++y, to += width) {
        const std::uint32_t* from = pixels + static_cast<std::ptrdiff_t>(y) * stride + part.left;
        for (std::size_t x = 0; x < width; ++x)
            to[x] = from[x] ^ flip;
    }
}

}  // namespace gui
