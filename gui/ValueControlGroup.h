#pragma once

#include "gui/ValueControl.h"

#include <vector>

namespace gui {

/// Value controls that move together when the user asks for it.
class ValueControl::Group {
public:
    enum class Mode {
        Same = 0,        // by the same steps
        Opposite = 1,    // by as many steps the other way
        Difference = 2,  // by the leader's difference, measured through `forward`
        Ratio = 3,       // by the leader's ratio, measured through `forward`
    };

    Mode mode = Mode::Same;
    WarpFunction forward;  // from normalised values to what is compared
    WarpFunction inverse;
    std::vector<ValueControl*> members;

    bool Contains(const ValueControl& control) const;
    /// Hands a change of `leader` to the others.
    /// @param target  where the leader's tracked position goes to
    /// The largest change of a member, in steps.
    int Apply(ValueControl& leader, GesturePhase phase, int index, int delta, int flags, int target);

private:
    int MemberDelta(const ValueControl& leader, const ValueControl& member, int delta, int target) const;
    float Measure(float normalized) const { return forward ? forward(normalized) : normalized; }
};

}  // namespace gui
