#pragma once

#include "gui/ButtonStyle.h"
#include "gui/ScrollArea.h"
#include "gui/ScrollButton.h"

namespace gui {

/// A row that is scrolled sideways, with a button at each end that has more to show.
class ScrollStrip : public AnimatedControl {
public:
    /// @param leftStyle, rightStyle  of the buttons; outlive the strip; null for buttons without pictures
    ScrollStrip(UserInterface& ui, Control* parent, Animator* controlAnimator, const Button::Style* leftStyle,
                const Button::Style* rightStyle);

    Property<float> ScrollStep{32.0f, this};  // logical units of a notch and of a button's repetition

    /// Logical units; at once, and not beyond the ends.
    void ScrollBy(float delta) { ScrollTo(strip.ScrollX.value() + delta); }
    void ScrollTo(float x);
    ScrollArea& Area() { return strip; }
    Control& Content() { return strip.Content(); }
    ScrollButton& LeftButton() { return leftButton; }
    ScrollButton& RightButton() { return rightButton; }

    void Resized() override;
    /// From the buttons, which stand beside the area.
    bool WheelDelta(Point point, int inputFlags, float delta, Orientation axis) override;
    void propertyChanged(AbstractProperty& property) override;

private:
    void LayOut();
    void ShowButtons();

    ScrollArea strip;
    ScrollButton leftButton;
    ScrollButton rightButton;
};

}  // namespace gui
