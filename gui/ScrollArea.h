#pragma once

#include "gui/AnimatedControl.h"

#include <cstdint>
#include <memory>

namespace gui {

/// Shows a part of a larger content, which the hand, the wheel and scroll bars move.
class ScrollArea : public AnimatedControl {
public:
    class ScrollBar;
    class ScrollBarGutter;

    ScrollArea(UserInterface& ui, Control* parent, Animator* controlAnimator);
    ~ScrollArea() override;

    Property<bool> HorizontalBar{false, this};
    Property<bool> VerticalBar{false, this};
    Property<bool> HandDrag{true, this};
    Property<bool> AutoHide{false, this};      // hides a bar with nothing to scroll
    Property<float> ScrollStepX{32.0f, this};  // logical units for a notch of the wheel
    Property<float> ScrollStepY{32.0f, this};
    Property<float> ContentWidth{0.0f, this};                // at least that of the view
    LimitedProperty<float> ScrollX{0.0f, 0.0f, 1.0f, this};  // logical units, 0 to content less view
    Property<float> ScrollGutterX{12.0f, this};              // height of the horizontal bar
    Property<Rect> Insets{Rect{}, this};                     // of the view
    Property<float> ContentHeight{0.0f, this};
    LimitedProperty<float> ScrollY{0.0f, 0.0f, 1.0f, this};
    Property<float> ScrollGutterY{12.0f, this};
    Property<bool> CentersContent{false,
                                  this};  // a content that is smaller than the view stands in its middle

    NotifyEvent OnScrolled;  // `ScrollX` or `ScrollY` moved, or how far they can go

    /// The parent of what is scrolled.
    Control& Content() { return *content; }
    /// The part of this control that the content shows in.
    Rect ViewRect() const;
    /// How far it can be scrolled.
    Point ScrollRange() const;
    void StopScrolling();

    void MouseDown(int pressedButton, Point point, int inputFlags) override;
    void MouseMoved(Point point, int inputFlags) override;
    void MouseUp(int releasedButton, Point point, int inputFlags) override;
    bool WheelDelta(Point point, int inputFlags, float delta, Orientation axis) override;
    void Resized() override;
    void propertyChanged(AbstractProperty& property) override;

    /// A bar was pressed at a point of its gutter.
    void BeginBarDrag(Orientation axis, Point point);
    void DragBar(Orientation axis, Point point);
    void EndBarDrag() { dragMode = DragMode::None; }

protected:
    /// Scrolls along an axis; false if it was at that end already.
    bool ScrollAlong(Orientation axis, float delta);

private:
    class PassingControl;
    enum class DragMode { None = 0, Bar = 1, Hand = 2 };

    LimitedProperty<float>& ScrollOf(Orientation axis)
    {
        return axis == Orientation::Vertical ? ScrollY : ScrollX;
    }
    void LayOut();
    void LayOutBars();
    void PlaceContent();
    void DragHand(Point point);
    void Coast(Orientation axis, float speed);
    float BarLength(Orientation axis) const;
    double Seconds() const;

    std::unique_ptr<Control> view;
    std::unique_ptr<Control> content;
    std::unique_ptr<ScrollBarGutter> horizontalGutter;
    std::unique_ptr<ScrollBarGutter> verticalGutter;
    bool layingOut = false;
    DragMode dragMode = DragMode::None;
    Point pressPosition;
    Point startScroll;
    Point velocity;           // units per second
    double sampleTime = 0.0;  // seconds
    Point samplePosition;
    float barGrab = 0.0f;  // where in the bar it was pressed
};

}  // namespace gui
