#include "gui/ControlBar.h"

#include "gui/BarAnimation.h"

#include <algorithm>

namespace gui {

ControlBar::ControlBar(UserInterface& ui, Control* parent, Animator* controlAnimator)
    : AnimatedControl(ui, parent, controlAnimator)
{}

bool ControlBar::HasItem(const Control& control) const
{
    return std::find(items.begin(), items.end(), &control) != items.end();
}

float ControlBar::LengthOf(const Control& control) const
{
    return Orientation.value() == gui::Orientation::Vertical ? control.GetHeight() : control.GetWidth();
}

void ControlBar::SetLength(Control& control, float length)
{
    if (Orientation.value() == gui::Orientation::Vertical)
        control.SetHeight(length);
    else
        control.SetWidth(length);
}

void ControlBar::Insert(int index, Control& control, Control* next)
{
    std::erase(items, &control);
    auto place = next ? std::find(items.begin(), items.end(), next)
                 : index >= 0 && index <= static_cast<int>(items.size()) ? items.begin() + index
                                                                         : items.end();
    items.insert(place, &control);
    control.Parent.assign(this);
    Relayout();
}

void ControlBar::RememberOpacity(const Control& control)
{
    const auto known = [&control](const FullOpacity& entry) { return entry.control == &control; };
    if (std::none_of(closed.begin(), closed.end(), known))
        closed.push_back({&control, control.Opacity.value()});
}

void ControlBar::Collapse(Control& control)
{
    if (!HasItem(control))
        return;
    Animator* const running = GetAnimator();
    if (Animated.value() && running) {
        RememberOpacity(control);
        running->Start<BarAnimation>(this, AnimationKey(&control), *this, control,
                                     BarAnimation::Kind::Closing);
        return;
    }
    if (running)
        running->Stop(AnimationKey(&control));
    SetLength(control, 0.0f);
}

void ControlBar::Expand(Control& control, float fullSize)
{
    if (!HasItem(control))
        return;
    Animator* const running = GetAnimator();
    const bool runs = Animated.value() && running;
    if (running)
        running->Stop(AnimationKey(&control));
    const auto known = std::find_if(closed.begin(), closed.end(), [&control](const FullOpacity& entry) {
        return entry.control == &control;
    });
    if (known != closed.end()) {
        control.Opacity.assign(known->opacity);
        closed.erase(known);
    }
    if (runs)
        running->Start<BarAnimation>(this, AnimationKey(&control), *this, control,
                                     BarAnimation::Kind::OpeningTo, fullSize);
    else
        SetLength(control, fullSize);
}

void ControlBar::Relayout(const Control* first)
{
    if (layingOut)
        return;
    layingOut = true;
    const ScopedUpdate batch(*this);
    const bool vertical = Orientation.value() == gui::Orientation::Vertical;
    float place = 0.0f;
    bool follows = !first || !HasItem(*first);
    for (Control* item : items) {
        follows = follows || item == first;
        if (follows)
            item->SetPosition(vertical ? Point{item->GetLeft(), place} : Point{place, item->GetTop()});
        place += LengthOf(*item);
    }
    if (vertical)
        SetHeight(place);
    else
        SetWidth(place);
    layingOut = false;
}

void ControlBar::ChildChanged(Control& control, Change change)
{
    AnimatedControl::ChildChanged(control, change);
    if (change == Change::ChildAdded && !HasItem(control))
        return Insert(insertIndex, control);
    if (!HasItem(control))
        return;
    if (change == Change::ChildRemoved) {
        if (Animator* const running = GetAnimator())
            running->Stop(AnimationKey(&control));
        std::erase(items, &control);
        std::erase_if(closed, [&control](const FullOpacity& entry) { return entry.control == &control; });
        Relayout();
    } else if (change == Change::Bounds) {
        Relayout();
    }
}

void ControlBar::propertyChanged(AbstractProperty& property)
{
    AnimatedControl::propertyChanged(property);
    if (&property == &Orientation)
        Relayout();
}

}  // namespace gui
