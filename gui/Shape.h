#pragma once

#include "gui/Bitmap.h"
#include "gui/Control.h"
#include "gui/Gradient.h"

namespace gui {

/// A rectangle with a border, a colour and a gradient.
class Shape : public Control {
public:
    enum class GradientType {
        Linear = 0,  // along `GradientDirection`
        Radial = 1,  // from the middle to the corners; kept as a picture
    };

    Shape(UserInterface& ui, Control* parent, Color fillColor);

    Property<Color> FillColor;
    Property<Color> BorderColor{Color::Black(), this};
    Property<float> BorderWidth{0.0f, this};  // logical units, inside of the bounds
    Property<Gradient> FillGradient{Gradient(), this};
    Property<Direction> GradientDirection{Direction::Down, this};
    Property<Shape::GradientType> GradientType{Shape::GradientType::Linear, this};

    void PaintContent(Canvas& canvas) override;
    void BackingScaleChanged() override;
    void Resized() override;
    void propertyChanged(AbstractProperty& property) override;

private:
    Rect InnerRect() const;
    void RenderGradient(Point size);

    Bitmap rendered;
    bool isRendered = false;
};

}  // namespace gui
