#pragma once

#include "gui/Button.h"

#include <vector>

namespace gui {

/// A button whose `On` stands for its value, alone or as one of a row of buttons of which one is on.
class ToggleButton : public Button {
public:
    ToggleButton(UserInterface& ui, Control* parent, Animator* controlAnimator,
                 const Style* initialStyle = nullptr);
    ~ToggleButton() override;

    /// The value that is on: 0 or 1. From 2 on, all above 0 are, and this is what turning on gives.
    Property<int> OnValue{1, this};

    /// Joins `button` to the row: it is on at the value of its place, counted from `MinValue`. This button
    /// has the first place. It takes over the button's click and gesture events.
    void AddButton(Button& button);

    void LinkedComponentDeleted(Component& component) override;
    void propertyChanged(AbstractProperty& property) override;
    void ValuePropertyChanged(AbstractProperty& property) override;

protected:
    void OnStateChanged() override;
    void Clicked() override;

private:
    void Join(Button& button);
    void Choose(const Button& button);
    void ShowValue();
    void PassOn(AbstractProperty& property);

    std::vector<Button*> members;  // this one first; empty without a row
    bool showing = false;          // `On` follows the value
    int sharedOpacity = 255;       // what the members had while they were in step
};

}  // namespace gui
