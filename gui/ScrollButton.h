#pragma once

#include "gui/Button.h"
#include "gui/Timer.h"

#include <memory>

namespace gui {

class ScrollStrip;

/// Scrolls a strip as long as it is held. Its inner half lets the mouse through to what lies below, but for
/// its arrow.
class ScrollButton : public Button {
public:
    /// @param scrollDirection  left or right
    ScrollButton(ScrollStrip& scrolledStrip, gui::Direction scrollDirection, const Style* initialStyle);

    const gui::Direction Direction;
    Property<float> Step{32.0f, this};  // logical units at each repetition

    int GetAlphaAt(Point point) const override;
    void MouseDown(int pressedButton, Point point, int inputFlags) override;
    void MouseUp(int releasedButton, Point point, int inputFlags) override;

private:
    void Repeat();
    bool ScrollOnce(float distance);

    ScrollStrip& strip;
    std::unique_ptr<Timer> repeatTimer;
    int repetitions = 0;
};

}  // namespace gui
