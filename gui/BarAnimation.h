#pragma once

#include "gui/Animation.h"

namespace gui {

class Control;
class ControlBar;

/// Opens or closes a control in a bar: its length along the bar and its opacity, one after the other where it
/// does both. The bar stops it when the control goes.
class BarAnimation : public Animation {
public:
    enum class Kind {
        Opening = 0,    // to the length that the control has now, as the bar's flags say
        Closing = 1,    // from the length that the control has now, as the bar's flags say
        OpeningTo = 2,  // to a given length
        ClosingFrom = 3,
    };

    /// @param givenSize  logical units, for the two kinds that take one
    BarAnimation(Animator& animationOwner, ControlBar& controlBar, Control& barControl, Kind animationKind,
                 float givenSize = 0.0f);

protected:
    void Update(float progress) override;

private:
    void UpdateClosing(float first, float second);
    void UpdateOpening(float first, float second);

    ControlBar& bar;
    Control& control;
    Kind kind;
    int flags;
    int startOpacity;
    float fullSize;  // logical units
};

}  // namespace gui
