#include "gui/Control.h"

#include "gui/RootControl.h"
#include "gui/UserInterface.h"

#include <algorithm>
#include <utility>

namespace gui {

Control::Control(UserInterface& ui, Control* parent) : Component(ui) { Parent.assign(parent); }

Control::~Control()
{
    beingDestroyed = true;
    listeners.clear();
    UnlinkFromAll();
    if (RootControl* root = GetRoot())
        root->ForgetControl(*this);
    if (hoverChild)
        userInterface.ClearHint(*this);
    while (!children.empty()) {
        Control& child = *children.back();
        children.pop_back();
        child.Parent.assign(nullptr);
    }
    Parent.assign(nullptr);
}

void Control::SetBounds(const Rect& bounds)
{
    if (!IsSameRect(bounds, GetBounds()))
        Bounds.assign(bounds);
}

void Control::SetBounds(float x, float y, float width, float height)
{
    SetBounds(Rect::At({x, y}, {width, height}));
}

void Control::SetPosition(Point newPosition) { SetBounds(Rect::At(newPosition, GetSize())); }

void Control::SetSize(Point size) { SetBounds(Rect::At(GetPosition(), size)); }

void Control::SetCenter(Point center) { SetPosition(GetPosition() + (center - GetCenter())); }

void Control::propertyChanged(AbstractProperty& property)
{
    const ComponentGuard self(*this);
    const bool isGone =
        (&property == &Visible && !Visible.value()) || (&property == &Enabled && !Enabled.value());
    if (isGone)
        LeaveMouse();
    if (!self.IsAlive())
        return;
    if (&property == &Bounds)
        ApplyBounds();
    else if (&property == &Parent)
        ApplyParent();
    else if (&property == &Visible)
        ApplyVisibility(Change::Visibility);
    else if (&property == &Opacity)
        ApplyVisibility(Change::Opacity);
    else if (&property == &BackgroundColor)
        Invalidate();
    else if (&property == &Opaque)
        UpdateOpaqueRect();
    else if (&property == &HintText && IsInnermostHovered() && !userInterface.Hint().empty())
        userInterface.SetHint(HintText.value());
}

void Control::LinkedComponentDeleted(Component& component)
{
    std::erase_if(listeners, [&](Component* listener) { return listener == &component; });
}

void Control::AddChangeListener(Control& listener)
{
    if (std::find(listeners.begin(), listeners.end(), &listener) != listeners.end())
        return;
    listeners.push_back(&listener);
    LinkTo(listener);
}

void Control::RemoveChangeListener(Control& listener) { std::erase(listeners, &listener); }

void Control::NotifyChange(Change change)
{
    const ComponentGuard self(*this);
    if (currentParent)
        currentParent->ChildChanged(*this, change);
    for (std::size_t i = self.IsAlive() ? listeners.size() : 0; i-- > 0;) {
        if (i < listeners.size())
            listeners[i]->ChildChanged(*this, change);
        if (!self.IsAlive())
            return;
    }
}

// The tree

RootControl* Control::GetRoot() const
{
    auto* top = const_cast<Control*>(this);
    while (top->currentParent)
        top = top->currentParent;
    return top->AsRoot();
}

void Control::ApplyParent()
{
    Control* const newParent = Parent.value();
    Control* const oldParent = currentParent;
    if (newParent == oldParent)
        return;

    const ComponentGuard self(*this);
    // Handlers may delete this control, or give it yet another parent: that assignment then did the rest.
    const auto isOvertaken = [&](Control* expectedParent) {
        return !self.IsAlive() || Parent.value() != newParent || currentParent != expectedParent;
    };
    if (oldParent) {
        RootControl* root = beingDestroyed ? nullptr : GetRoot();
        if (root && (!newParent || newParent->GetRoot() != root))
            root->ForgetControl(*this);
        if (isOvertaken(oldParent))
            return;
        LeaveParent();
        if (isOvertaken(nullptr))
            return;
    }
    if (newParent) {
        JoinParent(*newParent);
        if (isOvertaken(newParent))
            return;
    }
    for (std::size_t i = listeners.size(); i-- > 0 && !isOvertaken(newParent);) {
        if (i < listeners.size())
            listeners[i]->ChildChanged(*this, Change::Reparented);
    }
}

void Control::LeaveParent()
{
    Control& parent = *std::exchange(currentParent, nullptr);
    std::erase(parent.children, this);
    if (parent.focusedChild == this)
        parent.focusedChild = nullptr;
    const bool wasHovered = parent.hoverChild == this;
    if (wasHovered)
        parent.hoverChild = &parent;
    const ComponentGuard self(*this);
    if (!parent.beingDestroyed) {
        if (CanPaint())
            parent.Invalidate(layoutBounds);
        parent.ChildChanged(*this, Change::ChildRemoved);
    }
    if (wasHovered && self.IsAlive() && !beingDestroyed)
        SetHover(nullptr);
}

void Control::JoinParent(Control& newParent)
{
    currentParent = &newParent;
    auto& siblings = newParent.children;
    const int index = newParent.insertIndex;
    const bool appended = index < 0 || index >= static_cast<int>(siblings.size());
    siblings.insert(appended ? siblings.end() : siblings.begin() + index, this);
    if (CanPaint())
        newParent.Invalidate(layoutBounds);
    newParent.ChildChanged(*this, Change::ChildAdded);
}

int Control::SetChildIndex(Control& child, int index)
{
    const int count = static_cast<int>(children.size());
    const auto found = std::find(children.begin(), children.end(), &child);
    if (found == children.end() || index < 0 || index >= count)
        return count;
    const auto place = children.begin() + index;
    if (found < place)
        std::rotate(found, found + 1, place + 1);
    else
        std::rotate(place, found, found + 1);
    if (child.CanPaint())
        Invalidate(child.layoutBounds);
    return index;
}

void Control::DeleteChildren()
{
    while (!children.empty())
        delete children.back();
}

void Control::ChildChanged(Control&, Change change)
{
    // A child's opaque rectangle counts where the child is: it also moves, comes and goes with it.
    switch (change) {
    case Change::ChildAdded:
    case Change::ChildRemoved:
    case Change::Bounds:
    case Change::OpaqueRect:
        return UpdateOpaqueRect();
    default:
        return;
    }
}

void Control::SetFocusedChild(Control* control)
{
    focusedChild = control;
    if (currentParent)
        currentParent->SetFocusedChild(this);
}

void Control::BackingScaleChanged()
{
    const ComponentGuard self(*this);
    for (std::size_t i = 0; self.IsAlive() && i < children.size(); ++i)
        children[i]->BackingScaleChanged();
}

// Places

Point Control::ToRoot(Point point) const
{
    for (const Control* control = this; control->currentParent; control = control->currentParent)
        point = point + control->layoutBounds.Origin();
    return point;
}

Point Control::FromRoot(Point point) const { return point - ToRoot({}); }

bool Control::IsShown() const
{
    Rect rect = GetClientRect();
    const Control* top = this;
    for (const Control* control = this; control; control = control->currentParent) {
        rect = rect.Intersected(control->GetClientRect());
        if (!control->CanPaint() || rect.IsEmpty())
            return false;
        rect = rect.Translated(control->layoutBounds.Origin());
        top = control;
    }
    return top->GetRoot() != nullptr;
}

bool Control::IsPointShown(Point point) const
{
    for (const Control* control = this; control; control = control->currentParent) {
        if (!control->CanPaint() || !control->GetClientRect().Contains(point))
            return false;
        point = point + control->layoutBounds.Origin();
    }
    return GetRoot() != nullptr;
}

}  // namespace gui
