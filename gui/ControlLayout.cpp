#include "gui/Control.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace gui {

namespace {

/// True if the children have to follow: a change that shows, or one that reaches another whole unit.
bool IsResize(float oldLength, float newLength)
{
    return std::abs(newLength - oldLength) > 0.01f || std::trunc(oldLength) != std::trunc(newLength);
}

/// Moves two opposite edges after a change of the parent's length.
/// @param follows  the edge keeps its distance to the parent's near or far edge
void FollowParent(float& nearEdge, float& farEdge, bool followsNear, bool followsFar, float change)
{
    if (followsFar) {
        farEdge += change;
        if (!followsNear)
            nearEdge += change;
    } else if (!followsNear) {
        nearEdge += change * 0.5f;
        farEdge += change * 0.5f;
    }
}

bool Touches(const Rect& a, const Rect& b)
{
    return !(a.right < b.left || a.left > b.right || a.bottom < b.top || a.top > b.bottom);
}

/// The largest rectangle that two opaque ones are known to cover together.
Rect CoveredByBoth(const Rect& a, const Rect& b)
{
    if (a.IsEmpty())
        return b;
    if (!Touches(a, b))
        return a;
    const Rect both = a.United(b);
    const Rect common = a.Intersected(b);
    const Rect wide{both.left, common.top, both.right, common.bottom};
    const Rect high{common.left, both.top, common.right, both.bottom};
    // Neither of the two helps where one covers most of the other.
    Rect best = wide.Area() >= high.Area() ? wide : high;
    for (const Rect& single : {a, b}) {
        if (single.Area() > best.Area())
            best = single;
    }
    return best;
}

}  // namespace

void Control::ApplyBounds()
{
    const ComponentGuard self(*this);
    const Rect oldBounds = layoutBounds;
    const Point oldSize = clientRect.Size();
    // Once, for the old place and the new one.
    beginUpdate();
    Invalidate();
    layoutBounds = Bounds.value();
    clientRect = Rect::At({}, layoutBounds.Size());
    if (!dirtyRect.IsEmpty())
        dirtyRect = dirtyRect.Translated(oldBounds.Origin() - layoutBounds.Origin());
    Invalidate();

    const Point size = clientRect.Size();
    if (IsResize(oldSize.x, size.x) || IsResize(oldSize.y, size.y)) {
        LayOutChildren(oldSize);
        if (self.IsAlive())
            Resized();
        if (self.IsAlive())
            UpdateOpaqueRect();
    }
    if (self.IsAlive())
        NotifyChange(Change::Bounds);
    if (self.IsAlive())
        endUpdate();
}

void Control::LayOutChildren(Point oldSize)
{
    if (layingOutChildren)
        return;
    const ComponentGuard self(*this);
    const Point change = clientRect.Size() - oldSize;
    layingOutChildren = true;
    for (std::size_t i = 0; self.IsAlive() && i < children.size(); ++i) {
        Control& child = *children[i];
        const int anchors = child.Anchors.value();
        if (anchors == (Anchor::left | Anchor::top))
            continue;
        Rect rect = child.GetBounds();
        FollowParent(rect.left, rect.right, anchors & Anchor::left, anchors & Anchor::right, change.x);
        FollowParent(rect.top, rect.bottom, anchors & Anchor::top, anchors & Anchor::bottom, change.y);
        child.SetBounds(rect);
    }
    if (self.IsAlive())
        layingOutChildren = false;
}

void Control::ApplyVisibility(Change change)
{
    const ComponentGuard self(*this);
    const bool shows = change == Change::Opacity ? Visible.value() : Opacity.value() > 0;
    if (shows) {
        dirtyRect = dirtyRect.United(GetClientRect());
        changed();
        UpdateOpaqueRect();
    }
    if (self.IsAlive())
        NotifyChange(change);
}

void Control::Invalidate(const Rect& rect)
{
    if (!CanPaint())
        return;
    dirtyRect = dirtyRect.United(rect.Intersected(GetClientRect()));
    changed();
}

void Control::InvalidateInParent(const Rect& rect)
{
    if (currentParent)
        currentParent->Invalidate(rect.Translated(layoutBounds.Origin()));
}

void Control::update()
{
    for (std::size_t i = 0; i < linkedComponents.size(); ++i)
        linkedComponents[i]->changed();
    if (!dirtyRect.IsEmpty())
        InvalidateInParent(std::exchange(dirtyRect, {}));
}

void Control::UpdateOpaqueRect()
{
    std::vector<Rect> rects;
    for (const Control* child : children) {
        if (!child->opaqueRect.IsEmpty())
            rects.push_back(child->opaqueRect.Translated(child->layoutBounds.Origin()));
    }
    std::sort(rects.begin(), rects.end(), [](const Rect& a, const Rect& b) {
        return std::pair(a.top, a.left) < std::pair(b.top, b.left);
    });
    Rect covered;
    for (const Rect& rect : rects)
        covered = CoveredByBoth(covered, rect);
    covered = covered.Intersected(GetClientRect());
    opaqueChildrenRect = covered.IsEmpty() ? Rect{} : covered;

    Rect opaque;
    if (Visible.value() && Opacity.value() == 255)
        opaque = Opaque.value() ? GetClientRect() : opaqueChildrenRect;
    const bool differs = !IsSameRect(opaque, opaqueRect);
    opaqueRect = opaque;
    if (differs)
        NotifyChange(Change::OpaqueRect);
}

}  // namespace gui
