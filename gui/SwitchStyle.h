#pragma once

#include "gui/Switch.h"

namespace gui {

/// What a kind of sliders looks like. The pictures outlive it; any may be null.
class Switch::Style : public Component {
public:
    using Component::Component;

    const Bitmap* track = nullptr;  // stretched over the slider
    const Bitmap* trackActive = nullptr;
    const Bitmap* fill = nullptr;  // laid over the track from the low end to the handle's middle
    const Bitmap* handle = nullptr;
    const Bitmap* handleActive = nullptr;
    const Bitmap* handleDown = nullptr;
};

}  // namespace gui
