#include "gallery/Caption.h"

#include "gui/UserInterface.h"

namespace gallery {

Caption::Caption(gui::UserInterface& ui, gui::Control* parent, const std::string& string, float points,
                 gui::Color color)
    : Control(ui, parent), text(ui.Platform().CreateText())
{
    Enabled.assign(false);
    text->Size.assign(points);
    text->Color.assign(color);
    text->String.assign(string);
    Fit();
}

void Caption::SetString(const std::string& string)
{
    text->String.assign(string);
    Fit();
    Invalidate();
}

void Caption::Fit()
{
    const float width = text->GetWidth();
    float left = place.x;
    if (alignment == gui::Alignment::Centre)
        left = userInterface.Backing().Snap(place.x - width * 0.5f);
    else if (alignment == gui::Alignment::Right)
        left -= width;
    SetBounds(left, place.y, width, text->GetHeight());
}

void Caption::Place(gui::Point point, gui::Alignment newAlignment)
{
    place = point;
    alignment = newAlignment;
    Fit();
}

void Caption::PaintContent(gui::Canvas& canvas) { canvas.DrawBitmapAt(text->GetBitmap(), {}); }

void Caption::BackingScaleChanged()
{
    Fit();
    Control::BackingScaleChanged();
}

}  // namespace gallery
