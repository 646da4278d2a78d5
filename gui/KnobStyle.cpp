#include "gui/KnobStyle.h"

#include "gui/Bitmap.h"

namespace gui {

float Knob::Style::OuterEdge() const
{
    if (OuterRadius.value() > 0.0f || !MainPicture())
        return OuterRadius.value();
    return MainPicture()->GetLogicalSize().x * 0.5f - 2.0f;
}

}  // namespace gui
