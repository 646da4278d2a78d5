#include "gui/MultiLabel.h"

#include "gui/UserInterface.h"

#include <algorithm>

namespace gui {

MultiLabel::MultiLabel(UserInterface& ui, Control* parent, Animator* lineAnimator, int lineCount)
    : AnimatedControl(ui, parent, lineAnimator)
{
    for (int i = 0; i < lineCount; ++i) {
        lines.push_back(ui.Platform().CreateText());
        lines.back()->OnChanged.setHandler(NotifyEvent::handler([this](void*) { Invalidate(); }));
    }
}

MultiLabel::~MultiLabel() = default;

void MultiLabel::SetBackground(const Bitmap* picture, float corner)
{
    background = picture;
    backgroundCorner = corner;
    Invalidate();
}

Rect MultiLabel::ContentRect() const
{
    const Rect& insets = Insets.value();
    return {clientRect.left + insets.left, clientRect.top + insets.top, clientRect.right - insets.right,
            clientRect.bottom - insets.bottom};
}

float MultiLabel::LinesHeight()
{
    float height = 0.0f;
    for (const auto& line : lines)
        height += line->String.value().empty() ? 0.0f : line->GetHeight();
    return height;
}

float MultiLabel::FirstTop()
{
    const Rect content = ContentRect();
    const float room = content.Height() - LinesHeight();
    switch (Layout.value()) {
    case gui::Layout::Top:
        return content.top;
    case gui::Layout::Centre:
        return content.top + room / 2.0f;
    case gui::Layout::Bottom:
        return content.top + room;
    }
    return content.top;
}

float MultiLabel::LineTop(int index)
{
    float top = FirstTop();
    for (int i = 0; i < index; ++i)
        top += Line(i).String.value().empty() ? 0.0f : Line(i).GetHeight();
    return top;
}

Point MultiLabel::GetContentSize()
{
    float width = 0.0f;
    for (const auto& line : lines)
        width = std::max(width, line->String.value().empty() ? 0.0f : line->GetWidth());
    const Rect& insets = Insets.value();
    return {insets.left + width + insets.right, insets.top + LinesHeight() + insets.bottom};
}

void MultiLabel::PaintContent(Canvas& canvas)
{
    Control::PaintContent(canvas);
    if (background)
        canvas.DrawBitmapStretched(*background, clientRect, Rect::At({}, background->GetLogicalSize()),
                                   backgroundCorner);
    const Rect content = ContentRect();
    for (int i = 0; i < LineCount(); ++i) {
        Text& line = Line(i);
        if (line.String.value().empty())
            continue;
        const float room = content.Width() - line.GetWidth();
        const float share = Alignment.value() == gui::Alignment::Left     ? 0.0f
                            : Alignment.value() == gui::Alignment::Centre ? 0.5f
                                                                          : 1.0f;
        // The shift is for lines that are centred in a box; elsewhere they keep to its edge.
        const float shift = Layout.value() == gui::Layout::Centre ? line.GetBaselineShift() : 0.0f;
        canvas.DrawBitmapAt(line.GetBitmap(), {content.left + share * room, LineTop(i) + shift});
    }
}

void MultiLabel::propertyChanged(AbstractProperty& property)
{
    if (&property == &Alignment)
        for (const auto& line : lines)
            line->Alignment.assign(Alignment.value());
    if (&property == &Alignment || &property == &Layout || &property == &Insets)
        Invalidate();
    AnimatedControl::propertyChanged(property);
}

}  // namespace gui
