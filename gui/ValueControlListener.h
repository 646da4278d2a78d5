#pragma once

namespace gui {

class ValueControl;

/// A gesture is one begin, any number of changes and one end.
enum class GesturePhase { Begin = 0, Change = 1, End = 2 };

/// Hears of what the user does to value controls. Thread: main, with the root's lock held.
class ValueControlListener {
public:
    virtual ~ValueControlListener() = default;
    /// How far, in steps and without sign, something that follows the control could go with a change by
    /// `amount`; 0 without followers.
    virtual int GetAllowedChange(ValueControl& control, int amount, int delta) = 0;
    /// Brackets the changes of a group.
    virtual void BeginBatch() = 0;
    /// @param delta  the steps that followers are to go as well; 0 for none
    virtual void ValueGesture(ValueControl& control, GesturePhase phase, int delta) = 0;
    virtual void EndBatch() = 0;
};

}  // namespace gui
