#pragma once

#include "gui/Button.h"
#include "gui/ScrollArea.h"

namespace gui {

/// The part of a gutter that stands for the view.
class ScrollArea::ScrollBar : public Button {
public:
    ScrollBar(ScrollArea& scrollArea, Control& gutter, gui::Orientation barAxis);

    void MouseDown(int pressedButton, Point point, int inputFlags) override;
    void MouseMoved(Point point, int inputFlags) override;
    void MouseUp(int releasedButton, Point point, int inputFlags) override;
    void PaintContent(Canvas& canvas) override;

private:
    ScrollArea& area;
    gui::Orientation axis;
};

/// The way of a scroll bar. A press beside the bar scrolls by a view.
class ScrollArea::ScrollBarGutter : public Control {
public:
    ScrollBarGutter(ScrollArea& scrollArea, gui::Orientation gutterAxis);

    void MouseDown(int pressedButton, Point point, int inputFlags) override;
    ScrollBar& Bar() { return bar; }

private:
    ScrollArea& area;
    gui::Orientation axis;
    ScrollBar bar;
};

}  // namespace gui
