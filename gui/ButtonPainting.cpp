#include "gui/Bitmap.h"
#include "gui/ButtonStyle.h"

#include <algorithm>

namespace gui {

namespace {

float AlignedLeft(Alignment alignment, const Rect& area, float width)
{
    switch (alignment) {
    case Alignment::Left:
        return area.left;
    case Alignment::Right:
        return area.right - width;
    case Alignment::Centre:
        break;
    }
    return (area.left + area.right - width) * 0.5f;
}

}  // namespace

void Button::PaintContent(Canvas& canvas)
{
    RolloverValueControl::PaintContent(canvas);
    PaintBackground(canvas);
    PaintOverlay(canvas);
    PaintText(canvas);
}

const Bitmap* Button::BackgroundPicture()
{
    if (!style)
        return nullptr;
    Style::Pictures shown = style->pictures;
    if (On.value()) {
        const Style::Pictures& lit = style->onPictures;
        if (lit.normal)
            shown.normal = shown.active = lit.normal;
        if (lit.active)
            shown.active = lit.active;
        if (lit.down)
            shown.down = lit.down;
    }
    if (visualState == VisualState::Down)
        return shown.down ? shown.down : shown.active ? shown.active : shown.normal;
    return rollover.Picture(shown.normal, shown.active);
}

void Button::PaintBackground(Canvas& canvas)
{
    const Bitmap* const picture = BackgroundPicture();
    if (!picture)
        return;
    const Point size = picture->GetLogicalSize();
    const Rect source = Rect::At({}, size);
    // Where nothing stands on it, it is itself what the button shows.
    const bool alone = !Overlay() && (!label || label->String.value().empty());
    const int alpha = alone ? ShownAlpha(BackgroundOpacity.value()) : BackgroundOpacity.value();
    switch (Background.value()) {
    case BackgroundStyle::Stretched:
        canvas.DrawBitmapStretched(*picture, clientRect, source, Corner.value(), alpha);
        break;
    case BackgroundStyle::Centred:
        canvas.DrawBitmapAt(*picture, clientRect.Middle() - size * 0.5f, alpha);
        break;
    case BackgroundStyle::StretchedHalves:
        canvas.DrawBitmapStretchedHalves(*picture, clientRect, source, alpha, Orientation::Horizontal);
        break;
    }
}

int Button::ShownOpacity(int opacity) const
{
    // What is faint, or not there at all, shows in full under the mouse.
    return ShownAlpha(opacity + (255 - opacity) * rollover.Blend() / 255);
}

void Button::PaintOverlay(Canvas& canvas)
{
    const Bitmap* const picture = Overlay();
    if (!picture)
        return;
    const Rect whole = Rect::At({}, picture->GetLogicalSize());
    const Rect source = OverlaySource.value().IsEmpty() ? whole : OverlaySource.value().Intersected(whole);
    const int alpha = ShownOpacity(OverlayOpacity.value());
    if (OverlayMode.value() == OverlayStyle::Stretched)
        return canvas.DrawBitmapStretched(*picture, clientRect, source, Corner.value(), alpha);
    const float margin = OverlayMargin.value();
    const Rect area{clientRect.left + margin, clientRect.top, clientRect.right - margin, clientRect.bottom};
    const float left = AlignedLeft(OverlayAlignment.value(), area, source.Width());
    const float top = (clientRect.Height() - source.Height()) * 0.5f;
    canvas.DrawBitmap(*picture, Rect::At({left, top}, source.Size()), source.Origin(), alpha);
}

void Button::LayOutText()
{
    if (!label)
        return;
    // A text beside an overlay on the right ends before it.
    const bool besideOverlay = overlayOff && OverlayAlignment.value() == Alignment::Right &&
                               OverlayMode.value() == OverlayStyle::Aligned;
    const float right = std::max(
        TextMargin.value(), besideOverlay ? overlayOff->GetLogicalSize().x + OverlayMargin.value() : 0.0f);
    label->MaxWidth.assign(
        std::max(clientRect.Width() - TextMargin.value() - TextOffset.value() - right, 1.0f));
    label->Alignment.assign(TextAlignment.value());
    label->LineStyle.assign(LineCount.value() > 1 ? Text::LineStyle::Wrapped : Text::LineStyle::Ellipsis);
}

void Button::PaintText(Canvas& canvas)
{
    if (!label || label->String.value().empty())
        return;
    const float margin = TextMargin.value();
    const Rect area{clientRect.left + margin, clientRect.top, clientRect.right - margin, clientRect.bottom};
    const float left = AlignedLeft(TextAlignment.value(), area, label->GetWidth()) + TextOffset.value();
    const float top = (clientRect.Height() - label->GetHeight()) * 0.5f + label->GetBaselineShift();
    canvas.DrawBitmapAt(label->GetBitmap(), {left, top}, ShownOpacity(TextOpacity.value()));
}

}  // namespace gui
