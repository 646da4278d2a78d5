#include "platform/TextField.h"

#include "gui/PlatformDelegate.h"
#include "gui/Timer.h"
#include "gui/UserInterface.h"
#include "platform/DialogStyle.h"

#include <algorithm>

namespace gui {

namespace {

constexpr float padding = 2.0f;
constexpr float caretWidth = 1.0f;
constexpr int blinkMs = 530;

// The text's colour is the caller's; the field's has to set it off.
Color backgroundFor(Color text)
{
    const int lightness = (text.r * 2 + text.g * 5 + text.b) / 8;
    return lightness < 128 ? DialogStyle::field : DialogStyle::text;
}

}  // namespace

TextField::TextField(UserInterface& ui, Control* parent, TextFieldModel& fieldModel, const Text& textFont)
    : Control(ui, parent),
      model(fieldModel),
      font(textFont),
      measure(ui.Platform().CreateText()),
      blink(ui.CreateTimer())
{
    Opaque.assign(true);
    blink->Interval.assign(blinkMs);
    blink->OnElapsed.setHandler(NotifyEvent::handler([this](void*) {
        caretIsOn = !caretIsOn;
        Invalidate();
    }));
}

TextField::~TextField() = default;

void TextField::SetAlignment(Alignment newAlignment)
{
    alignment = newAlignment;
    ModelChanged();
}

void TextField::SetPassword(bool hidden)
{
    password = hidden;
    ModelChanged();
}

void TextField::ShowCaret(bool shows)
{
    hasCaret = caretIsOn = shows;
    blink->Running.assign(shows);
    Invalidate();
}

std::string TextField::ShownBetween(int first, int last) const
{
    if (!password)
        return model.TextBetween(first, last);
    std::string dots;
    for (int i = first; i < last; ++i)
        dots += "\xE2\x80\xA2";
    return dots;
}

float TextField::WidthTo(int place) const
{
    if (place <= 0)
        return 0.0f;
    measure->CopyFrom(font, ShownBetween(0, place));
    return measure->GetWidth();
}

float TextField::Origin() const
{
    const float room = GetWidth() - 2.0f * padding - caretWidth;
    const float width = WidthTo(model.Length());
    if (width >= room || alignment == Alignment::Left)
        return padding - offset;
    return padding + (alignment == Alignment::Centre ? (room - width) * 0.5f : room - width);
}

int TextField::PlaceAt(float x) const
{
    const float wanted = x - Origin();
    int low = 0, high = model.Length();
    while (low < high) {
        const int middle = (low + high) / 2;
        // Past the middle of a letter the caret goes behind it.
        if ((WidthTo(middle) + WidthTo(middle + 1)) * 0.5f <= wanted)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

void TextField::ModelChanged()
{
    const float room = std::max(GetWidth() - 2.0f * padding - caretWidth, 1.0f);
    const float caret = WidthTo(model.Caret());
    offset = std::clamp(offset, caret - room, caret);
    offset = std::clamp(offset, 0.0f, std::max(0.0f, WidthTo(model.Length()) - room));
    if (hasCaret) {
        caretIsOn = true;
        blink->Restart();
    }
    Invalidate();
}

void TextField::Resized()
{
    Control::Resized();
    ModelChanged();
}

void TextField::PaintContent(Canvas& canvas)
{
    const Rect client = GetClientRect();
    const Color color = font.Color.value();
    canvas.FillRect(client, backgroundFor(color));
    const int first = model.SelectionStart(), last = model.SelectionEnd();
    const bool shown = hasCaret && model.HasSelection();
    if (shown)
        canvas.FillRect(
            {Origin() + WidthTo(first), padding, Origin() + WidthTo(last), client.bottom - padding},
            DialogStyle::highlight);
    if (model.Length() > 0) {
        const float x = Origin();  // measures with the same text object
        measure->CopyFrom(font, ShownBetween(0, model.Length()));
        const float y = (GetHeight() - measure->GetHeight()) * 0.5f + measure->GetBaselineShift();
        canvas.DrawBitmapAt(measure->GetBitmap(), {x, y});
    }
    if (shown)
        DrawPart(canvas, first, last, DialogStyle::highlightedText);
    if (caretIsOn && !model.HasSelection()) {
        const float x = Origin() + WidthTo(model.Caret());
        canvas.FillRect({x, padding, x + caretWidth, client.bottom - padding}, color);
    }
}

// Clipped out of the whole, so that letters keep their places.
void TextField::DrawPart(Canvas& canvas, int first, int last, Color color) const
{
    const float origin = Origin(), left = origin + WidthTo(first), right = origin + WidthTo(last);
    measure->CopyFrom(font, ShownBetween(0, model.Length()));
    measure->Color.assign(color);
    const float y = (GetHeight() - measure->GetHeight()) * 0.5f + measure->GetBaselineShift();
    const Canvas::State before = canvas.Save();
    canvas.Clip.assign(canvas.Clip.value().Intersected({left, 0.0f, right, GetHeight()}));
    canvas.FillRect({left, padding, right, GetHeight() - padding}, DialogStyle::highlight);
    canvas.DrawBitmapAt(measure->GetBitmap(), {origin, y});
    canvas.Restore(before);
}

void TextField::MouseDown(int pressed, Point point, int inputFlags)
{
    Control::MouseDown(pressed, point, inputFlags);
    if (pressed != MouseButton::left)
        return;
    const int place = PlaceAt(point.x);
    selecting = !(inputFlags & InputFlags::doubleClick);
    if (!selecting)
        model.SelectWordAt(place);
    else
        model.Select(
            inputFlags & InputFlags::shift
                ? (model.Caret() == model.SelectionStart() ? model.SelectionEnd() : model.SelectionStart())
                : place,
            place);
    ModelChanged();
}

void TextField::MouseMoved(Point point, int inputFlags)
{
    Control::MouseMoved(point, inputFlags);
    if (!selecting)
        return;
    const int fixed = model.Caret() == model.SelectionStart() ? model.SelectionEnd() : model.SelectionStart();
    model.Select(fixed, PlaceAt(point.x));
    ModelChanged();
}

void TextField::MouseUp(int released, Point point, int inputFlags)
{
    selecting = false;
    Control::MouseUp(released, point, inputFlags);
}

}  // namespace gui
