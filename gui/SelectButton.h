#pragma once

#include "gui/DragTracker.h"
#include "gui/SelectButtonBase.h"

#include <vector>

namespace gui {

/// Chooses one of a list of values from a menu, with the wheel or by a drag.
class SelectButton : public SelectButtonBase {
public:
    class SelectMenuItem;

    SelectButton(UserInterface& ui, Control* parent, Animator* controlAnimator,
                 const Style* initialStyle = nullptr);
    ~SelectButton() override;

    Property<bool> OpensMenu{true, this};  // a press opens the menu; otherwise a drag walks through it

    /// Adds an entry. The range grows to take its value in.
    SelectMenuItem& AddEntry(const std::string& text, int value);
    SelectMenuItem& AddEntry(const std::string& text) { return AddEntry(text, EntryCount()); }
    void AddSeparator() { Menu().AddSeparator(); }
    void ClearEntries();
    int EntryCount() const { return static_cast<int>(entries.size()); }
    /// Null if there is none.
    SelectMenuItem* EntryOf(int value) const;
    /// Takes the value as the user's choice, with a gesture of its own if none runs.
    void Choose(int value);

    void MouseDown(int pressedButton, Point point, int inputFlags) override;
    void MouseMoved(Point point, int inputFlags) override;
    void MouseUp(int releasedButton, Point point, int inputFlags) override;
    bool ScrollGesture(ScrollPhase phase, Point point, int inputFlags, Point velocity, Point delta) override;
    void ValuePropertyChanged(AbstractProperty& property) override;
    void GroupMemberChanged() override;

protected:
    bool OpensPopup() const override { return OpensMenu.value() && SelectButtonBase::OpensPopup(); }
    void ShowPopup() override;

private:
    friend class SelectMenuItem;
    void UpdateLabel();
    /// The value `steps` entries down the list, without those that can't be chosen.
    int ValueAfter(int steps) const;

    std::vector<SelectMenuItem*> entries;  // of the menu, top down
    DragTracker tracker;
    bool dragging = false;
    float lastY = 0.0f;
};

/// The entry of one value.
class SelectButton::SelectMenuItem : public MenuItem {
public:
    SelectMenuItem(SelectButton& selectButton, const std::string& text, int entryValue)
        : MenuItem(text), value(entryValue), button(&selectButton)
    {}

    const int value;

    void propertyChanged(AbstractProperty& property) override;
    void ItemSelected(MenuItem& item) override;

private:
    friend class SelectButton;
    SelectButton* button;  // null when it died, as it may while the menu is open
};

}  // namespace gui
