#pragma once

#include "gui/AnimatedControl.h"
#include "gui/ModifierActions.h"
#include "gui/ValueControlListener.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>

namespace gui {

class DragTracker;

/// A control that edits a whole number. What the user does goes out as gestures: a begin, changes and an end,
/// which follows on every path, also when the control dies. Values are taken to lie within +-2^29.
class ValueControl : public AnimatedControl {
public:
    class Group;
    enum class TransformBehavior {
        Plain = 0,   // the control shows its steps evenly
        Warped = 1,  // it shows them through its warp functions
    };
    /// From one normalised value to another, 0..1 each. Empty for the same.
    using WarpFunction = std::function<float(float)>;
    /// Bits of a change's flags.
    struct ChangeFlag {
        static constexpr int fromValue = 1;  // counts from the value instead of the tracked position
        static constexpr int dryRun = 2;     // only tells how far it would go
        static constexpr int toStart = 4;    // goes back to where the gesture began
        static constexpr int unasked = 8;    // is not limited by how far anyone can go
    };

    static constexpr int valueCount = 4;  // the most values that one control edits

    ValueControl(UserInterface& ui, Control* parent, Animator* controlAnimator);
    ~ValueControl() override;

    Property<int> DefaultValue{0, this};      // of the reset gesture
    Property<bool> ResetAlways{false, this};  // a reset goes out even without a change
    Property<int> MaxValue{4096, this};       // always above `MinValue`
    Property<int> MinValue{0, this};
    Property<int> Value{0, this};  // always within the two
    Property<int> ParameterIndex{-1, this};
    Property<TransformBehavior> Transform{TransformBehavior::Plain, this};

    NotifyEvent OnValueChanged;  // by the user's hand
    NotifyEvent OnGestureBegin;
    NotifyEvent OnGestureEnd;

    /// Takes 0..1, through the inverse warp function. Listeners don't hear of it.
    void SetNormalizedValue(float normalized);
    /// The value's place in the range, 0..1, without warp functions.
    float GetNormalizedValue() const { return Normalize(Value.value()); }
    void SetListener(ValueControlListener* newListener) { listener = newListener; }
    ValueControlListener* Listener() const { return listener; }
    /// @param inverse  undoes `forward`; both or none
    void SetWarp(WarpFunction forward, WarpFunction inverse);

    /// Puts both into one group. Two groups become one, which goes by the rule of this control's.
    void LinkWith(ValueControl& other);
    /// Takes it out of its group, which ends with fewer than two members.
    void Unlink();
    /// Null outside of a group.
    Group* ValueGroup() const { return valueGroup.get(); }
    bool IsInGesture() const { return inGesture; }
    int Range() const { return MaxValue.value() - MinValue.value(); }

    virtual void ValueChanged() { OnValueChanged.fire(this); }
    /// One of the properties above took a new value.
    virtual void ValuePropertyChanged(AbstractProperty& property);
    virtual void ChangeValue(GesturePhase phase, int delta) { ChangeValue(phase, 0, delta, 0); }
    /// Carries out a change on this control alone; how far it went or would go, without sign.
    /// @param index  of the value, where a control has several: 0..valueCount - 1
    virtual int ApplyChange(GesturePhase phase, int index, int delta, int flags);
    virtual void UpdateGroupMode(int inputFlags);
    /// The group has another member, or a member has a new value.
    virtual void GroupMemberChanged() {}

    /// Carries out a change on this control and, in group mode, on its group.
    void ChangeValue(GesturePhase phase, int index, int delta, int flags);

    void CancelMouse() override;
    void CaptureReleased() override;
    void MouseDown(int pressedButton, Point point, int inputFlags) override;
    void MouseUp(int releasedButton, Point point, int inputFlags) override;
    void propertyChanged(AbstractProperty& property) override;

protected:
    float Normalize(int value) const;
    /// The step nearest to a normalised value.
    int Denormalize(float normalized) const;
    /// What the control shows for a value: 0..1, warped if `Transform` says so.
    float ToShown(int value) const;
    int FromShown(float shown) const;

    /// Goes to the default if the flags ask for it; true if they did.
    bool ResetOnRequest(int inputFlags);
    /// Goes to `value` within a gesture, without the followers.
    void JumpTo(int value);
    /// The wheel as a gesture of its own; always true.
    /// @param dragging  the mouse has the control: the event is swallowed
    bool TrackWheel(DragTracker& tracker, bool dragging, ScrollPhase phase, int inputFlags, float velocity,
                    float delta);
    /// Asks for a phase of the wheel's gesture without a tracker: what `TrackWheel` does around the steps.
    /// True if it is time for steps.
    bool PrepareWheel(bool dragging, ScrollPhase phase);
    /// Runs `release`, which gives the capture up and ends the press itself.
    template <class F>
    void ReleaseKnowingly(F release)
    {
        const ComponentGuard guard(*this);
        releaseIsKnown = true;
        release();
        if (guard.IsAlive())
            releaseIsKnown = false;
    }

    int trackedValue = 0;  // the gesture's position, which may lie outside of the range
    int groupStartValue = 0;
    bool resetting = false;

private:
    void BeginGesture();
    int ApplyStep(int delta, int flags);
    void EndGesture();
    void ChangeAll(int index, int delta, int flags, bool active);
    int LimitDelta(int index, int delta, int flags, bool active);
    void BringIntoRange();
    void UpdateGroupBit(int index, bool active, int& changeFlags);
    void LeaveGroup();
    void TellGroup() const;

    WarpFunction warpForward;
    WarpFunction warpInverse;
    ValueControlListener* listener = nullptr;
    std::shared_ptr<Group> valueGroup;
    int gestureValue = 0;  // the value last set by the gesture
    // Steps beyond what anyone could follow. A hand that comes back walks them first.
    std::array<int, valueCount> overshoot{};  // per index
    std::uint32_t groupBits = 0;              // per index: the group takes part in the gesture
    std::uint32_t ledBits = 0;                // per index: another member's gesture is this one's too
    bool groupMode = false;
    bool inGesture = false;
    bool wheeling = false;  // the gesture is the wheel's
    bool releaseIsKnown = false;
};

}  // namespace gui
