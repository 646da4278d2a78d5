#include "gui/FloatValueButton.h"

#include <cmath>

namespace gui {

namespace {

constexpr float handOverDistance = 4.0f;  // logical units across the drag

}  // namespace

void FloatValueButton::SetFormat(std::function<std::string(int value)> newFormat)
{
    format = std::move(newFormat);
    UpdateText();
}

bool FloatValueButton::HandsDragOver(Point point, int inputFlags)
{
    Control* const parent = Parent.value();
    if (madeStep || !parent || !parent->Movable.value())
        return false;
    const Point moved = point - pressPosition;
    const float across = Orientation.value() == gui::Orientation::Vertical ? moved.x : moved.y;
    if (std::abs(across) <= handOverDistance)
        return false;
    HandOverMouse(*parent, pressPosition + GetPosition(), point + GetPosition(), inputFlags);
    return true;
}

}  // namespace gui
