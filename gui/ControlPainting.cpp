#include "gui/Control.h"

namespace gui {

namespace {

void SetClip(Canvas& canvas, const Rect& clip)
{
    if (!IsSameRect(canvas.Clip.value(), clip))
        canvas.Clip.assign(clip);
}

}  // namespace

void Control::PaintContent(Canvas& canvas)
{
    if (BackgroundColor.value().a != 0)
        canvas.FillRect(GetClientRect(), BackgroundColor.value());
}

void Control::PaintTree(Canvas& canvas)
{
    const Rect clip = canvas.Clip.value().Intersected(GetClientRect());
    if (clip.IsEmpty())
        return;
    canvas.Alpha.assign(Opacity.value() * canvas.Alpha.value() / 255);

    const Rect uncovered = canvas.Alpha.value() == 255 ? UncoveredRect(clip) : clip;
    if (!uncovered.IsEmpty()) {
        SetClip(canvas, uncovered);
        PaintContent(canvas);
    }
    SetClip(canvas, clip);
    PaintChildren(canvas);
}

/// What is left of `clip` once the strip is cut off that opaque children cover.
Rect Control::UncoveredRect(const Rect& clip) const
{
    const Rect covered = opaqueChildrenRect.Intersected(clip);
    if (covered.IsEmpty())
        return clip;
    Rect rest = clip;
    if (covered.left <= clip.left && covered.right >= clip.right) {
        if (covered.top <= clip.top)
            rest.top = covered.bottom;
        else if (covered.bottom >= clip.bottom)
            rest.bottom = covered.top;
    } else if (covered.top <= clip.top && covered.bottom >= clip.bottom) {
        if (covered.left <= clip.left)
            rest.left = covered.right;
        else if (covered.right >= clip.right)
            rest.right = covered.left;
    }
    return rest;
}

void Control::PaintChildren(Canvas& canvas)
{
    for (std::size_t i = 0; i < children.size(); ++i) {
        Control& child = *children[i];
        if (!child.CanPaint())
            continue;
        const Canvas::State saved = canvas.Save();
        const Point childPosition = child.layoutBounds.Origin();
        canvas.Origin.assign(saved.origin + childPosition);
        canvas.Clip.assign(saved.clip.Translated(Point{} - childPosition));
        child.PaintTree(canvas);
        canvas.Restore(saved);
    }
}

}  // namespace gui
