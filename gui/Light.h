#pragma once

#include "gui/Control.h"

#include <memory>

namespace gui {

class Bitmap;
class Timer;

/// A light that flashes: once on, it goes off by itself.
class Light : public Control {
public:
    struct Style {
        const Bitmap* on;
        const Bitmap* off;
        /// "LightOn.png" and "LightOff.png". Throws EResource and EBitmap.
        static Style Load(UserInterface& ui);
    };

    /// The control takes the size of the picture of the light that is off.
    Light(UserInterface& ui, Control* parent, const Style& lightStyle);
    ~Light() override;

    Property<bool> Value{false, this};
    /// Its interval is how long the light stays on.
    Timer& GetTimer() { return *timer; }

    void PaintContent(Canvas& canvas) override;
    void propertyChanged(AbstractProperty& property) override;

private:
    Style style;
    std::unique_ptr<Timer> timer;
};

}  // namespace gui
