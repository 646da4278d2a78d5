#pragma once

#include "gui/DragTracker.h"
#include "gui/RolloverValueControl.h"

namespace gui {

class Bitmap;

/// A slider. Its handle is dragged; a click beside it takes the value to there.
class Switch : public RolloverValueControl {
public:
    class Style;

    /// Takes its size from the style's track.
    /// @param switchStyle  outlives the slider
    Switch(UserInterface& ui, Control* parent, Animator* controlAnimator, const Style& switchStyle);

    Property<bool> ShowsPosition{true, this};  // draws the fill and the handle
    Property<float> HandleSize{0.0f, this};    // logical units along the way; 0 for the picture's
    Property<float> HandleOffset{0.0f, this};  // logical units that stay free at both ends
    Property<gui::Direction> Direction{gui::Direction::Up, this};  // to where the value grows
    Property<bool> StretchHalves{false, this};                     // of the track

    bool IsVertical() const;
    /// How far the handle goes, logical units.
    float Travel() const;
    /// Where the handle is.
    virtual Rect HandleRect() const;
    virtual bool IsOnHandle(Point point) const { return HandleRect().Contains(point); }
    /// The value of a click.
    int ValueAt(Point point) const;

    void MouseDown(int pressedButton, Point point, int inputFlags) override;
    void MouseMoved(Point point, int inputFlags) override;
    void MouseUp(int releasedButton, Point point, int inputFlags) override;
    bool ScrollGesture(ScrollPhase phase, Point point, int inputFlags, Point velocity, Point delta) override;
    void PaintContent(Canvas& canvas) override;
    void Resized() override;
    void propertyChanged(AbstractProperty& property) override;
    void ValuePropertyChanged(AbstractProperty& property) override;

protected:
    enum class DragMode { None, TrackPressed, Dragging };

    void PaintTrack(Canvas& canvas);
    void PaintHandle(Canvas& canvas);
    float HandleLength() const;

    DragMode dragMode = DragMode::None;

private:
    void StartDrag(Point point);
    float Along(Point point) const;
    void UpdateTracker();

    const Style& style;
    DragTracker tracker;
    Point pressPosition;
    bool isFirstMove = false;
    float lastAlong = 0.0f;
};

}  // namespace gui
