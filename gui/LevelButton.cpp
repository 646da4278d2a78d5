#include "gui/LevelButton.h"

#include "gui/Bitmap.h"

namespace gui {

void LevelButton::SetPictures(const Bitmap* fill, const Bitmap* cap)
{
    fillPicture = fill;
    capPicture = cap;
    Invalidate();
}

float LevelButton::FillWidth() const
{
    const float room = clientRect.Width() - Start.value() - 2.0f * FillMargin.value();
    return room * GetNormalizedValue() + FillMargin.value() + Start.value();
}

void LevelButton::PaintContent(Canvas& canvas)
{
    Control::PaintContent(canvas);
    PaintBackground(canvas);
    const float width = FillWidth();
    if (fillPicture) {
        // The fill as it looks over the whole button, cut off where the level ends.
        const Canvas::State saved = canvas.Save();
        canvas.Clip.assign(canvas.Clip.value().Intersected({0.0f, 0.0f, width, clientRect.Height()}));
        canvas.DrawBitmapStretched(*fillPicture, clientRect, Rect::At({}, fillPicture->GetLogicalSize()),
                                   Corner.value(), ShownAlpha());
        canvas.Restore(saved);
    }
    if (capPicture) {
        const Point size = capPicture->GetLogicalSize();
        canvas.DrawBitmapStretched(*capPicture, {width - size.x, 0.0f, width, clientRect.Height()},
                                   Rect::At({}, size), Corner.value(), ShownAlpha());
    }
    PaintOverlay(canvas);
    PaintText(canvas);
}

void LevelButton::propertyChanged(AbstractProperty& property)
{
    FloatValueButton::propertyChanged(property);
    if (&property == &Start || &property == &FillMargin)
        Invalidate();
}

}  // namespace gui
