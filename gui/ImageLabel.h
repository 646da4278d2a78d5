#pragma once

#include "gui/Control.h"

namespace gui {

class Bitmap;

/// Shows one of several labels that a picture holds above each other, all equally high.
class ImageLabel : public Control {
public:
    /// The control takes the size of one label.
    /// @param stackedLabels  outlives the control
    /// @param labelCount     above 0
    ImageLabel(UserInterface& ui, Control* parent, const Bitmap& stackedLabels, int labelCount);

    Property<int> Index{0, this};  // from the top; nothing is shown outside of 0..labels - 1

    void PaintContent(Canvas& canvas) override;
    void propertyChanged(AbstractProperty& property) override;

private:
    float LabelHeight() const;

    const Bitmap& labels;
    int count;
};

}  // namespace gui
