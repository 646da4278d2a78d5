#pragma once

#include "gui/Button.h"

namespace gui {

/// What a kind of buttons looks like. The pictures outlive it; any may be null.
class Button::Style : public Component {
public:
    using Component::Component;

    struct Pictures {
        const Bitmap* normal = nullptr;
        const Bitmap* active = nullptr;
        const Bitmap* down = nullptr;
    };

    Property<BackgroundStyle> Background{BackgroundStyle::Stretched, this};
    Property<float> Corner{0.0f, this};
    Property<Button::ButtonStyle> Behavior{Button::ButtonStyle::Plain, this};
    Property<bool> RectangularHit{true, this};
    LimitedProperty<int> LineCount{1, 1, 16, this};
    Property<Alignment> TextAlignment{Alignment::Left, this};
    Property<Color> TextColor{Color::Black(), this};
    Property<float> TextMargin{6.0f, this};
    Property<float> TextOffset{0.0f, this};
    Property<int> TextOpacity{255, this};
    Property<Button::OverlayStyle> OverlayMode{Button::OverlayStyle::Aligned, this};
    Property<Alignment> OverlayAlignment{Alignment::Left, this};
    Property<float> OverlayMargin{0.0f, this};
    Property<int> OverlayOpacity{255, this};
    Property<float> HitPadding{0.0f, this};
    Property<Rect> HitInsets{Rect{}, this};
    Property<float> DefaultWidth{0.0f, this};  // 0 for that of the normal picture
    Property<float> DefaultHeight{0.0f, this};

    Pictures pictures;
    Pictures onPictures;  // while the button is on; what is missing is taken from `pictures`
    const Bitmap* overlayOff = nullptr;
    const Bitmap* overlayOn = nullptr;  // null shows the other one

    /// The size of a button: the defaults, or else the picture's.
    Point DefaultSize() const;
};

}  // namespace gui
