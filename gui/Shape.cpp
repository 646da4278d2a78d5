#include "gui/Shape.h"

#include "gui/UserInterface.h"

#include <cmath>

namespace gui {

Shape::Shape(UserInterface& ui, Control* parent, Color fillColor)
    : Control(ui, parent), FillColor(fillColor, this), rendered(ui.Backing())
{}

Rect Shape::InnerRect() const
{
    // Whole pixels, or opposite edges would come out a pixel apart.
    return clientRect.Inset(userInterface.Backing().Snap(std::max(BorderWidth.value(), 0.0f)));
}

void Shape::PaintContent(Canvas& canvas)
{
    const Rect inner = InnerRect();
    if (BorderWidth.value() > 0.0f)
        canvas.StrokeRect(inner, BorderColor.value(), BorderWidth.value());
    if (FillColor.value().a != 0)
        canvas.FillRect(inner, FillColor.value());
    const Gradient& gradient = FillGradient.value();
    if (gradient.GetStopCount() == 0 || inner.IsEmpty())
        return;
    if (GradientType.value() == GradientType::Radial) {
        if (!isRendered)
            RenderGradient(inner.Size());
        canvas.DrawBitmap(rendered, inner, {}, 255);
        return;
    }
    const Direction direction = GradientDirection.value();
    const bool across = IsHorizontal(direction);
    const bool backwards = direction == Direction::Left || direction == Direction::Up;
    const float start = across ? inner.left : inner.top;
    const float end = across ? inner.right : inner.bottom;
    canvas.FillGradient(gradient, inner, direction, backwards ? end : start, backwards ? start : end, 255);
}

void Shape::RenderGradient(Point size)
{
    rendered.SetSize(size.x, size.y);
    const BasicPoint<int> pixels = rendered.GetSize();
    const auto share = [](int place, int length) {
        return (static_cast<float>(2 * place + 1) / static_cast<float>(length) - 1.0f);
    };
    std::uint32_t* pixel = rendered.Pixels();
    for (int y = 0; y < pixels.y; ++y) {
        for (int x = 0; x < pixels.x; ++x) {
            // 1 in the corners, whatever the rectangle's shape.
            const float distance = std::hypot(share(x, pixels.x), share(y, pixels.y)) * 0.70710678f;
            *pixel++ = ToPixel(FillGradient.value().GetColorAt(distance));
        }
    }
    isRendered = true;
}

void Shape::BackingScaleChanged()
{
    isRendered = false;
    Control::BackingScaleChanged();
}

void Shape::Resized()
{
    isRendered = false;
    Control::Resized();
}

void Shape::propertyChanged(AbstractProperty& property)
{
    const bool ofGradient =
        &property == &FillGradient || &property == &GradientDirection || &property == &GradientType;
    if (ofGradient || &property == &BorderWidth)
        isRendered = false;
    if (ofGradient || &property == &BorderWidth || &property == &FillColor || &property == &BorderColor)
        Invalidate();
    Control::propertyChanged(property);
}

}  // namespace gui
