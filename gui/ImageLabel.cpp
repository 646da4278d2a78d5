#include "gui/ImageLabel.h"

#include "gui/Bitmap.h"

namespace gui {

ImageLabel::ImageLabel(UserInterface& ui, Control* parent, const Bitmap& stackedLabels, int labelCount)
    : Control(ui, parent), labels(stackedLabels), count(labelCount)
{
    SetSize({labels.GetLogicalSize().x, LabelHeight()});
}

float ImageLabel::LabelHeight() const { return labels.GetLogicalSize().y / static_cast<float>(count); }

void ImageLabel::PaintContent(Canvas& canvas)
{
    Control::PaintContent(canvas);
    const int index = Index.value();
    if (index < 0 || index >= count)
        return;
    const Rect label = Rect::At({}, {labels.GetLogicalSize().x, LabelHeight()});
    canvas.DrawBitmap(labels, label.Intersected(clientRect),
                      {0.0f, static_cast<float>(index) * LabelHeight()}, 255);
}

void ImageLabel::propertyChanged(AbstractProperty& property)
{
    if (&property == &Index)
        Invalidate();
    Control::propertyChanged(property);
}

}  // namespace gui
