#include "gui/SelectButton.h"

#include "gui/ValueControlGroup.h"

#include <algorithm>

namespace gui {

void SelectButton::SelectMenuItem::propertyChanged(AbstractProperty& property)
{
    MenuItem::propertyChanged(property);
    if (button && &property == &Text)
        button->UpdateLabel();
}

void SelectButton::SelectMenuItem::ItemSelected(MenuItem& item)
{
    // The button keeps its entries while its menu is open, even if it dies itself.
    if (button && &item == this)
        button->Choose(value);
    MenuItem::ItemSelected(item);
}

SelectButton::SelectButton(UserInterface& ui, Control* parent, Animator* controlAnimator,
                           const Style* initialStyle)
    : SelectButtonBase(ui, parent, controlAnimator, initialStyle), tracker(ui)
{
    tracker.Stepped.assign(true);
    MaxValue.assign(1);
}

SelectButton::~SelectButton()
{
    for (SelectMenuItem* entry : entries)
        entry->button = nullptr;
}

SelectButton::SelectMenuItem& SelectButton::AddEntry(const std::string& text, int value)
{
    auto made = std::make_unique<SelectMenuItem>(*this, text, value);
    SelectMenuItem& entry = *made;
    Menu().AddItem(-1, std::move(made));
    entries.push_back(&entry);
    MinValue.assign(std::min(MinValue.value(), value));
    MaxValue.assign(std::max(MaxValue.value(), value));
    tracker.Steps.assign(EntryCount() - 1);
    UpdateLabel();
    return entry;
}

void SelectButton::ClearEntries()
{
    entries.clear();
    Menu().Clear();
    tracker.Steps.assign(0);
    UpdateLabel();
}

SelectButton::SelectMenuItem* SelectButton::EntryOf(int value) const
{
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [value](const SelectMenuItem* entry) { return entry->value == value; });
    return found != entries.end() ? *found : nullptr;
}

int SelectButton::ValueAfter(int steps) const
{
    const auto present = std::find(entries.begin(), entries.end(), EntryOf(Value.value()));
    const int direction = steps > 0 ? 1 : -1;
    int place = static_cast<int>(present - entries.begin());
    if (present == entries.end() && direction > 0)
        place = -1;  // from a value without an entry to the first or the last
    int value = Value.value();
    for (int left = std::abs(steps); left > 0;) {
        place += direction;
        if (place < 0 || place >= EntryCount())
            break;
        const SelectMenuItem& entry = *entries[static_cast<std::size_t>(place)];
        if (!entry.Enabled.value() || !entry.Visible.value())
            continue;
        value = entry.value;
        --left;
    }
    return value;
}

void SelectButton::Choose(int value)
{
    const ComponentGuard guard(*this);
    const bool ownGesture = !IsInGesture();
    if (ownGesture)
        ChangeValue(GesturePhase::Begin, 0);
    if (guard.IsAlive())
        ChangeValue(GesturePhase::Change, value - trackedValue);
    if (guard.IsAlive() && ownGesture)
        ChangeValue(GesturePhase::End, 0);
}

void SelectButton::ShowPopup()
{
    for (SelectMenuItem* entry : entries)
        entry->Checked.assign(entry->value == Value.value());
    SelectButtonBase::ShowPopup();
}

void SelectButton::MouseDown(int pressedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    UpdateGroupMode(inputFlags);
    SelectButtonBase::MouseDown(pressedButton, point, inputFlags);
    if (!guard.IsAlive() || pressedButton != MouseButton::left || !IsPressed())
        return;
    dragging = true;
    lastY = point.y;
    tracker.Restart(point);
}

void SelectButton::MouseMoved(Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    SelectButtonBase::MouseMoved(point, inputFlags);
    if (!guard.IsAlive() || !dragging)
        return;
    const float delta = point.y - lastY;
    lastY = point.y;
    if (const int steps = tracker.Track(*this, point, delta, inputFlags))
        ChangeValue(GesturePhase::Change, ValueAfter(steps) - trackedValue);
}

void SelectButton::MouseUp(int releasedButton, Point point, int inputFlags)
{
    const ComponentGuard guard(*this);
    dragging = dragging && releasedButton != MouseButton::left;
    SelectButtonBase::MouseUp(releasedButton, point, inputFlags);
    if (guard.IsAlive() && releasedButton == MouseButton::left)
        UpdateGroupMode(0);
}

bool SelectButton::ScrollGesture(ScrollPhase phase, Point, int inputFlags, Point velocity, Point delta)
{
    const bool held = dragging || IsPressed();
    if (!held && phase == ScrollPhase::Begin)
        tracker.Restart();
    if (PrepareWheel(held, phase)) {
        // The wheel walks down the list.
        const int steps = tracker.WheelSteps(-velocity.y, -delta.y, inputFlags);
        if (steps != 0)
            ChangeValue(GesturePhase::Change, ValueAfter(steps) - trackedValue);
    }
    return true;
}

void SelectButton::ValuePropertyChanged(AbstractProperty& property)
{
    SelectButtonBase::ValuePropertyChanged(property);
    if (&property == &Value)
        UpdateLabel();
}

void SelectButton::GroupMemberChanged() { UpdateLabel(); }

void SelectButton::UpdateLabel()
{
    bool mixed = false;
    if (const Group* group = ValueGroup())
        for (const ValueControl* member : group->members)
            mixed = mixed || member->Value.value() != Value.value();
    const SelectMenuItem* entry = EntryOf(Value.value());
    SetText(mixed ? "(Multiple)" : entry ? entry->Text.value() : std::string());
}

}  // namespace gui
