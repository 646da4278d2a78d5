#pragma once

#include "gui/Button.h"
#include "gui/DragTracker.h"

namespace gui {

/// A button that shows its value as text and takes a drag and the wheel.
class DraggedValueButton : public Button {
public:
    DraggedValueButton(UserInterface& ui, Control* parent, Animator* controlAnimator,
                       const Style* initialStyle = nullptr);

    Property<gui::Orientation> Orientation{gui::Orientation::Vertical, this};  // of the drag

    void MouseDown(int pressedButton, Point point, int inputFlags) override;
    void MouseMoved(Point point, int inputFlags) override;
    void MouseUp(int releasedButton, Point point, int inputFlags) override;
    bool ScrollGesture(ScrollPhase phase, Point point, int inputFlags, Point velocity, Point delta) override;
    void ValuePropertyChanged(AbstractProperty& property) override;

protected:
    virtual std::string FormatValue() const = 0;
    /// True if the drag was given to someone else instead.
    virtual bool HandsDragOver(Point, int) { return false; }
    void UpdateText() { SetText(FormatValue()); }

    Point pressPosition;    // own coordinates
    bool madeStep = false;  // the drag moved the value

private:
    float Along(Point point) const;

    DragTracker tracker;
    bool dragging = false;
    float lastAlong = 0.0f;  // root coordinate: the button may move under the mouse
};

}  // namespace gui
