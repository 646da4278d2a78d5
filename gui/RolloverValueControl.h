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
    /// Lit or not, by the mouse and by `Highlighted`.
    void UpdateRollover() { rollover.SetState(hovering || Highlighted.value()); }

    bool hovering = false;
    RolloverManager rollover{*this};
};

}  // namespace gui
