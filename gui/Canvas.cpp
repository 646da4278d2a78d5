#include "gui/Canvas.h"

#include "gui/StretchedPieces.h"

namespace gui {

Point Canvas::SnappedOrigin() const
{
    const IDeviceBacking& backing = target->GetBacking();
    return {backing.Snap(Origin.value().x), backing.Snap(Origin.value().y)};
}

Rect Canvas::Clipped(const Rect& rect, Point snapped) const
{
    return rect.Intersected(Clip.value().Translated(Origin.value() - snapped));
}

void Canvas::Restore(const State& state)
{
    Clip.assign(state.clip);
    Alpha.assign(state.alpha);
    Origin.assign(state.origin);
}

void Canvas::DrawBitmap(const IBitmap& bitmap, const Rect& destination, Point source, int alpha)
{
    const Point snapped = SnappedOrigin();
    const Rect rect = Clipped(destination, snapped);
    if (rect.IsEmpty())
        return;
    const Point cut = rect.Origin() - destination.Origin();
    target->DrawBitmap(bitmap, rect.Translated(snapped), source + cut, AlphaProduct(alpha, Alpha.value()));
}

void Canvas::DrawMaskedBitmap(const IBitmap& bitmap, const Rect& destination, Point source,
                              const IBitmap& mask, Point maskSource, int alpha)
{
    const Point snapped = SnappedOrigin();
    const Rect rect = Clipped(destination, snapped);
    if (rect.IsEmpty())
        return;
    const Point cut = rect.Origin() - destination.Origin();
    target->DrawMaskedBitmap(bitmap, rect.Translated(snapped), source + cut, mask, maskSource + cut,
                             AlphaProduct(alpha, Alpha.value()));
}

void Canvas::DrawCurves(const CurveStyle& style, const Rect& rect, const Rect& clip, Point origin, int flags,
                        int alpha)
{
    const Point snapped = SnappedOrigin();
    const Rect visible = Clipped(clip, snapped);
    if (visible.Intersected(rect).IsEmpty())
        return;
    target->DrawCurves(style, rect.Translated(snapped), visible.Translated(snapped), origin + snapped, flags,
                       AlphaProduct(alpha, Alpha.value()));
}

void Canvas::DrawCurveBand(BandMode mode, const ICurve& curve, const Rect& clip, const Rect& band,
                           Point origin, Color top, Color bottom, float innerFraction)
{
    const Point snapped = SnappedOrigin();
    const Rect visible = Clipped(clip, snapped);
    if (visible.IsEmpty())
        return;
    target->DrawCurveBand(mode, curve, visible.Translated(snapped), band.Translated(snapped),
                          origin + snapped, top.Faded(Alpha.value()), bottom.Faded(Alpha.value()),
                          innerFraction);
}

void Canvas::FillGradient(const IGradient& gradient, const Rect& rect, Direction direction, float start,
                          float end, int alpha)
{
    const Point snapped = SnappedOrigin();
    const Rect visible = Clipped(rect, snapped);
    if (visible.IsEmpty())
        return;
    const float shift = IsHorizontal(direction) ? snapped.x : snapped.y;
    target->FillGradient(gradient, visible.Translated(snapped), direction, start + shift, end + shift,
                         AlphaProduct(alpha, Alpha.value()));
}

void Canvas::DrawLine(Point from, Point to, const Rect& clip, Color color, float width)
{
    const Point snapped = SnappedOrigin();
    const Rect visible = Clipped(clip, snapped);
    if (!visible.IsEmpty())
        target->DrawLine(from + snapped, to + snapped, visible.Translated(snapped),
                         color.Faded(Alpha.value()), width);
}

void Canvas::FillRect(const Rect& rect, Color color)
{
    const Point snapped = SnappedOrigin();
    const Rect visible = Clipped(rect, snapped);
    if (!visible.IsEmpty())
        target->FillRect(visible.Translated(snapped), color.Faded(Alpha.value()));
}

Color Canvas::GetPixel(Point point) const { return target->GetPixel(point + SnappedOrigin()); }

void Canvas::SetPixel(Point point, Color color)
{
    if (Clip.value().Contains(point))
        target->SetPixel(point + SnappedOrigin(), color);
}

void Canvas::DrawBitmapAt(const IBitmap& bitmap, Point point, int alpha)
{
    // From the pixels, so that no rounding of the sum of place and size cuts the last row or column off.
    const float scale = GetBacking().Scale();
    const BasicPoint<int> size = bitmap.GetSize();
    const Point logical{static_cast<float>(size.x) / scale, static_cast<float>(size.y) / scale};
    DrawBitmap(bitmap, Rect::At(point, logical), {}, alpha);
}

namespace {

Extent Across(const Rect& rect) { return {rect.left, rect.Width()}; }
Extent Down(const Rect& rect) { return {rect.top, rect.Height()}; }

void DrawPieces(Canvas& canvas, const IBitmap& bitmap, const std::vector<StretchedPiece>& columns,
                const std::vector<StretchedPiece>& rows, int alpha)
{
    for (const StretchedPiece& row : rows) {
        for (const StretchedPiece& column : columns)
            canvas.DrawBitmap(bitmap,
                              Rect::At({column.destination, row.destination}, {column.length, row.length}),
                              {column.source, row.source}, alpha);
    }
}

}  // namespace

void Canvas::DrawBitmapStretched(const IBitmap& bitmap, const Rect& destination, const Rect& source,
                                 float corner, int alpha)
{
    const Point size = bitmap.GetLogicalSize();
    DrawPieces(*this, bitmap,
               StretchedPieces(Across(destination), Across(source), size.x, corner, GetBacking()),
               StretchedPieces(Down(destination), Down(source), size.y, corner, GetBacking()), alpha);
}

void Canvas::DrawBitmapStretchedHalves(const IBitmap& bitmap, const Rect& rect, const Rect& source, int alpha,
                                       Orientation axis)
{
    const Point size = bitmap.GetLogicalSize();
    const bool across = axis == Orientation::Horizontal;
    DrawPieces(*this, bitmap,
               across ? StretchedHalves(Across(rect), Across(source), size.x, GetBacking())
                      : StretchedPieces(Across(rect), Across(source), size.x, 0.0f, GetBacking()),
               across ? StretchedPieces(Down(rect), Down(source), size.y, 0.0f, GetBacking())
                      : StretchedHalves(Down(rect), Down(source), size.y, GetBacking()),
               alpha);
}

void Canvas::StrokeRect(const Rect& rect, Color color, float width)
{
    // All strips equally thick: on their own they would come out a pixel apart at broken scales.
    const IDeviceBacking& backing = GetBacking();
    const float thickness = backing.Snap(width);
    const Rect inner{backing.Snap(rect.left), backing.Snap(rect.top), backing.Snap(rect.right),
                     backing.Snap(rect.bottom)};
    const Rect outer = inner.Inset(-thickness);
    FillRect({outer.left, outer.top, outer.right, inner.top}, color);
    FillRect({inner.right, inner.top, outer.right, inner.bottom}, color);
    FillRect({outer.left, inner.bottom, outer.right, outer.bottom}, color);
    FillRect({outer.left, inner.top, inner.left, inner.bottom}, color);
}

}  // namespace gui
