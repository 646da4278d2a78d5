#pragma once

#include "gui/FloatValueButton.h"

namespace gui {

/// A value button that fills up with its value.
class LevelButton : public FloatValueButton {
public:
    using FloatValueButton::FloatValueButton;

    Property<float> Start{0.0f, this};       // logical units that are full at the least value
    Property<float> FillMargin{0.0f, this};  // logical units at both ends

    /// @param cap  drawn at the end of the fill, as high as the button; null for none
    /// Both outlive the button.
    void SetPictures(const Bitmap* fill, const Bitmap* cap);
    /// How far the fill reaches, logical units from the left.
    float FillWidth() const;

    void PaintContent(Canvas& canvas) override;
    void propertyChanged(AbstractProperty& property) override;

private:
    const Bitmap* fillPicture = nullptr;
    const Bitmap* capPicture = nullptr;
};

}  // namespace gui
