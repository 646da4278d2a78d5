#include "platform/NativeX11Control.h"

namespace gui {

NativeX11Control::NativeX11Control(X11Interface& ui) : X11Control(ui), bitmap(ui.Backing())
{
    bitmap.Opaque.assign(true);
}

NativeX11Control::~NativeX11Control() = default;

void NativeX11Control::Resized()
{
    bitmap.SetSize(GetWidth(), GetHeight());
    X11Control::Resized();
}

void NativeX11Control::WindowChanged()
{
    surface.reset();
    if (Window())
        surface = std::make_unique<X11Surface>(interface.Connection(), Window());
}

void NativeX11Control::PaintNow()
{
    if (!surface || DirtyRect().IsEmpty())
        return;
    // Read first: painting empties it.
    const DeviceRect dirty = ToDevice(DirtyRect(), interface.Backing().Scale());
    if (PaintDirty(bitmap.GetCanvas()))
        surface->Put(bitmap, dirty);
}

void NativeX11Control::Exposed(const DeviceRect& part)
{
    PaintNow();
    if (surface)
        surface->Put(bitmap, part);
}

}  // namespace gui
