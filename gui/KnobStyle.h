#pragma once

#include "gui/Knob.h"

namespace gui {

/// What a kind of knobs looks like. The pictures outlive it; any may be null.
class Knob::Style : public Component {
public:
    using Component::Component;

    Property<float> HandleTolerance{30.0f, this};  // degrees to each side of the pointer that turn the knob
    Property<float> OuterRadius{0.0f, this};       // logical units; 0 for just within the picture
    Property<float> InnerRadius{2.0f, this};       // the part around the axis that doesn't turn the knob
    Property<float> FocusInset{0.0f, this};        // how much a round hit area is smaller than the picture

    const Bitmap* backNormal = nullptr;  // without it the knob is a ring: only its band catches the mouse
    const Bitmap* backActive = nullptr;
    const Bitmap* overlayNormal = nullptr;  // the pointer, as it points up
    const Bitmap* overlayActive = nullptr;
    const Bitmap* overlayRotate = nullptr;
    const Bitmap* overlayDown = nullptr;

    bool IsRing() const { return !backNormal; }
    /// The larger picture, which gives the knob its size. Null without pictures.
    const Bitmap* MainPicture() const { return backNormal ? backNormal : overlayNormal; }
    /// `OuterRadius` or what stands for it.
    float OuterEdge() const;
};

}  // namespace gui
