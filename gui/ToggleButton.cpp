#include "gui/ToggleButton.h"

#include <algorithm>

namespace gui {

ToggleButton::ToggleButton(UserInterface& ui, Control* parent, Animator* controlAnimator,
                           const Style* initialStyle)
    : Button(ui, parent, controlAnimator, initialStyle)
{
    Toggles.assign(true);
    MaxValue.assign(1);
}

ToggleButton::~ToggleButton()
{
    for (Button* member : members) {
        if (member == this)
            continue;
        member->OnClick.setHandler(nullptr);
        member->OnGestureBegin.setHandler(nullptr);
        member->OnGestureEnd.setHandler(nullptr);
    }
}

void ToggleButton::AddButton(Button& joining)
{
    if (members.empty()) {
        members.push_back(this);
        sharedOpacity = Opacity.value();
    }
    if (std::find(members.begin(), members.end(), &joining) == members.end())
        Join(joining);
    MaxValue.assign(MinValue.value() + static_cast<int>(members.size()) - 1);
    ShowValue();
}

void ToggleButton::Join(Button& joining)
{
    members.push_back(&joining);
    LinkTo(joining);
    joining.Toggles.assign(true);
    joining.OnClick.setHandler(NotifyEvent::handler([this, &joining](void*) { Choose(joining); }));
    joining.OnGestureBegin.setHandler(
        NotifyEvent::handler([this](void*) { ChangeValue(GesturePhase::Begin, 0); }));
    joining.OnGestureEnd.setHandler(
        NotifyEvent::handler([this](void*) { ChangeValue(GesturePhase::End, 0); }));
}

void ToggleButton::LinkedComponentDeleted(Component& component)
{
    const auto gone = std::find_if(members.begin(), members.end(), [&component](const Button* member) {
        return static_cast<const Component*>(member) == &component;
    });
    // The places of the others, and so the values, stay: a row dies as a whole.
    if (gone != members.end())
        members.erase(gone);
    Button::LinkedComponentDeleted(component);
}

void ToggleButton::Choose(const Button& chosen)
{
    const auto place = std::find(members.begin(), members.end(), &chosen);
    if (place == members.end())
        return;
    const ComponentGuard guard(*this);
    ChangeValue(GesturePhase::Change,
                MinValue.value() + static_cast<int>(place - members.begin()) - trackedValue);
    if (guard.IsAlive())
        ShowValue();  // also where the click turned off the one that was on
}

void ToggleButton::Clicked()
{
    const ComponentGuard guard(*this);
    if (!members.empty())
        Choose(*this);
    if (guard.IsAlive())
        Button::Clicked();
}

void ToggleButton::ShowValue()
{
    showing = true;
    const int place = Value.value() - MinValue.value();
    if (members.empty())
        On.assign(OnValue.value() < 2 ? Value.value() == OnValue.value() : Value.value() > 0);
    for (std::size_t i = 0; i < members.size(); ++i)
        members[i]->On.assign(place == static_cast<int>(i));
    showing = false;
}

void ToggleButton::OnStateChanged()
{
    Button::OnStateChanged();
    if (showing || !members.empty())
        return;
    const int onValue = OnValue.value();
    const int target = On.value() ? onValue : onValue < 2 ? 1 - onValue : 0;
    if (IsInGesture())
        ChangeValue(GesturePhase::Change, target - trackedValue);
    else
        Value.assign(target);
}

void ToggleButton::ValuePropertyChanged(AbstractProperty& property)
{
    Button::ValuePropertyChanged(property);
    ShowValue();
}

void ToggleButton::PassOn(AbstractProperty& property)
{
    for (Button* member : members) {
        if (member == this)
            continue;
        if (&property == &Visible)
            member->Visible.assign(Visible.value());
        else if (&property == &HintText)
            member->HintText.assign(HintText.value());
        else if (member->Opacity.value() == sharedOpacity)
            member->Opacity.assign(Opacity.value());
    }
    sharedOpacity = Opacity.value();
}

void ToggleButton::propertyChanged(AbstractProperty& property)
{
    const ComponentGuard guard(*this);
    Button::propertyChanged(property);
    if (!guard.IsAlive())
        return;
    if (&property == &OnValue)
        ShowValue();
    if (&property == &Visible || &property == &HintText || &property == &Opacity)
        PassOn(property);
}

}  // namespace gui
