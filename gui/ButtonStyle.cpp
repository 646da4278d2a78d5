#include "gui/ButtonStyle.h"

#include "gui/Bitmap.h"

namespace gui {

Point Button::Style::DefaultSize() const
{
    const Bitmap* picture = pictures.normal ? pictures.normal : pictures.active;
    const Point size = picture ? picture->GetLogicalSize() : Point{};
    return {DefaultWidth.value() > 0.0f ? DefaultWidth.value() : size.x,
            DefaultHeight.value() > 0.0f ? DefaultHeight.value() : size.y};
}

}  // namespace gui
