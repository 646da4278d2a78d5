#pragma once

#include "gui/RolloverManager.h"
#include "gui/ValueControl.h"

namespace gui {

class Bitmap;

/// A value control that lights up while the mouse is over it.
class RolloverValueControl : public ValueControl {
public:
    RolloverValueControl(UserInterface& ui, Control* parent, Animator* controlAnimator);

    Property<bool> Highlighted{false, this};     // lit as if the mouse were over it
    Property<int> BackgroundOpacity{255, this};  // 0..255

    void MouseEntered() override;
    void MouseLeft() override;
    void propertyChanged(AbstractProperty& property) override;
    void ValuePropertyChanged(AbstractProperty& property) override;

protected:
    /// The press as every value control takes it. True, and the control alive, if a hand starts to work on
    /// the value: with the left button, and not with the second press of a double-click.
    bool TakePress(int pressedButton, Point point, int inputFlags);
    /// The release that ends such work. True, and the control alive, for the left button.
    bool TakeRelease(int releasedButton, Point point, int inputFlags);
    /// The opacity, 0..255, of what stands on the control and shows its value: faint while it is disabled.
    /// One that its owner has faded as a whole isn't faded twice.
    int ShownAlpha(int alpha = 255) const;
    /// Lit or not, by the mouse and by `Highlighted`.
    void UpdateRollover() { rollover.SetState(hovering || Highlighted.value()); }

    bool hovering = false;
    RolloverManager rollover{*this};
};

}  // namespace gui
