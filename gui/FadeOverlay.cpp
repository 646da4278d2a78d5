#include "gui/FadeOverlay.h"

#include "gui/Gradient.h"
#include "gui/UserInterface.h"
#include "gui/ValueAnimation.h"

namespace gui {

namespace {

constexpr std::array<FadeOverlay::Edge, 4> allEdges{FadeOverlay::Edge::Left, FadeOverlay::Edge::Top,
                                                    FadeOverlay::Edge::Right, FadeOverlay::Edge::Bottom};
constexpr int hoveredOpacity = 96;  // what lies below shows through

}  // namespace

FadeOverlay::FadeOverlay(UserInterface& ui, Control* parent, Animator* controlAnimator)
    : AnimatedControl(ui, parent, controlAnimator)
{}

Rect FadeOverlay::EdgeRect(Edge edge) const
{
    const Rect& insets = Insets.value();
    Rect area{clientRect.left + insets.left, clientRect.top + insets.top, clientRect.right - insets.right,
              clientRect.bottom - insets.bottom};
    const float size = FadeSize.value();
    switch (edge) {
    case Edge::Left:
        area.right = area.left + size;
        break;
    case Edge::Top:
        area.bottom = area.top + size;
        break;
    case Edge::Right:
        area.left = area.right - size;
        break;
    case Edge::Bottom:
        area.top = area.bottom - size;
        break;
    }
    return area;
}

void FadeOverlay::SetShown(Edge edge, bool shown)
{
    EdgeState& edgeState = edges[static_cast<std::size_t>(edge)];
    if (edgeState.shown == shown)
        return;
    edgeState.shown = shown;
    Invalidate(EdgeRect(edge));
}

void FadeOverlay::SetHovered(Edge edge, bool hovered)
{
    EdgeState& edgeState = edges[static_cast<std::size_t>(edge)];
    if (edgeState.hovered == hovered)
        return;
    edgeState.hovered = hovered;
    const int end = hovered ? hoveredOpacity : 255;
    const auto apply = [this, edge, &edgeState](int opacity) {
        edgeState.opacity = opacity;
        Invalidate(EdgeRect(edge));
    };
    if (Animator* const running = GetAnimator())
        running->Start<ValueAnimation<int>>(this, AnimationKey(&edgeState), apply, edgeState.opacity, end);
    else
        apply(end);
}

int FadeOverlay::GetAlphaAt(Point point) const
{
    for (const Edge edge : allEdges)
        if (IsEdgeShown(edge) && EdgeRect(edge).Contains(point))
            return 255;
    return 0;
}

void FadeOverlay::MouseMoved(Point point, int inputFlags)
{
    for (const Edge edge : allEdges)
        SetHovered(edge, IsEdgeShown(edge) && EdgeRect(edge).Contains(point));
    AnimatedControl::MouseMoved(point, inputFlags);
}

void FadeOverlay::MouseLeft()
{
    for (const Edge edge : allEdges)
        SetHovered(edge, false);
    AnimatedControl::MouseLeft();
}

const Bitmap& FadeOverlay::Picture(Edge edge)
{
    std::unique_ptr<Bitmap>& picture = edges[static_cast<std::size_t>(edge)].picture;
    if (picture)
        return *picture;
    picture = std::make_unique<Bitmap>(userInterface.Backing());
    const Point size = EdgeRect(edge).Size();
    picture->SetSize(size.x, size.y);
    // From the edge, where the colour is whole, inwards.
    const bool across = edge == Edge::Left || edge == Edge::Right;
    const bool fromEnd = edge == Edge::Right || edge == Edge::Bottom;
    const float length = across ? size.x : size.y;
    const Gradient fade(Color.value(), Color.value().WithAlpha(0));
    picture->FillGradient(fade, Rect::At({}, size), across ? Direction::Right : Direction::Down,
                          fromEnd ? length : 0.0f, fromEnd ? 0.0f : length, 255);
    return *picture;
}

void FadeOverlay::PaintContent(Canvas& canvas)
{
    AnimatedControl::PaintContent(canvas);
    for (const Edge edge : allEdges)
        if (IsEdgeShown(edge))
            canvas.DrawBitmapAt(Picture(edge), EdgeRect(edge).Origin(),
                                edges[static_cast<std::size_t>(edge)].opacity);
}

void FadeOverlay::DropPictures()
{
    for (EdgeState& edgeState : edges)
        edgeState.picture.reset();
    Invalidate();
}

void FadeOverlay::propertyChanged(AbstractProperty& property)
{
    AnimatedControl::propertyChanged(property);
    if (&property == &Color || &property == &Insets || &property == &FadeSize)
        DropPictures();
}

void FadeOverlay::Resized()
{
    DropPictures();
    AnimatedControl::Resized();
}

void FadeOverlay::BackingScaleChanged()
{
    DropPictures();
    AnimatedControl::BackingScaleChanged();
}

}  // namespace gui
