#include "gui/Image.h"

#include "gui/UserInterface.h"

namespace gui {

Image::Image(UserInterface& ui, Control* parent, const Bitmap& shown) : Control(ui, parent), bitmap(&shown)
{
    FollowBitmap();
}

Image::Image(UserInterface& ui, Control* parent)
    : Control(ui, parent), owned(std::make_unique<Bitmap>(ui.Backing())), bitmap(owned.get())
{
    owned->OnChanged.setHandler(NotifyEvent::handler([this](void*) { FollowBitmap(); }));
}

Image::~Image() = default;

void Image::FollowBitmap()
{
    SetSize(bitmap->GetLogicalSize());
    Invalidate();
}

void Image::SetBitmap(const Bitmap& shown)
{
    if (&shown == bitmap)
        return;
    bitmap = &shown;
    owned.reset();
    Invalidate();
}

Orientation Image::HalvesAxis() const
{
    return IsSameEdge(clientRect.Width(), bitmap->GetLogicalSize().x) ? Orientation::Vertical
                                                                      : Orientation::Horizontal;
}

std::vector<StretchedPiece> Image::Pieces(Orientation axis) const
{
    const bool across = axis == Orientation::Horizontal;
    const Point size = bitmap->GetLogicalSize();
    const Extent source{0.0f, across ? size.x : size.y};
    const Extent destination{0.0f, across ? clientRect.Width() : clientRect.Height()};
    const IDeviceBacking& backing = bitmap->GetBacking();
    if (StretchMode.value() == StretchMode::Halves && axis == HalvesAxis())
        return StretchedHalves(destination, source, source.length, backing);
    const float corner = StretchMode.value() == StretchMode::Corner ? Corner.value() : 0.0f;
    return StretchedPieces(destination, source, source.length, corner, backing);
}

int Image::GetAlphaAt(Point point) const
{
    if (StretchMode.value() == StretchMode::None)
        return bitmap->GetPixel(point + Offset.value()).a;
    return bitmap
        ->GetPixel({SourceOf(Pieces(Orientation::Horizontal), point.x),
                    SourceOf(Pieces(Orientation::Vertical), point.y)})
        .a;
}

void Image::PaintContent(Canvas& canvas)
{
    Control::PaintContent(canvas);
    const Rect source = Rect::At({}, bitmap->GetLogicalSize());
    switch (StretchMode.value()) {
    case StretchMode::None:
        canvas.DrawBitmap(*bitmap, clientRect, Offset.value(), 255);
        break;
    case StretchMode::Corner:
        canvas.DrawBitmapStretched(*bitmap, clientRect, source, Corner.value());
        break;
    case StretchMode::Halves:
        canvas.DrawBitmapStretchedHalves(*bitmap, clientRect, source, 255, HalvesAxis());
        break;
    }
}

void Image::propertyChanged(AbstractProperty& property)
{
    if (&property == &Offset || &property == &Corner || &property == &StretchMode)
        Invalidate();
    Control::propertyChanged(property);
}

}  // namespace gui
