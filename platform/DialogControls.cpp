#include "platform/DialogControls.h"

#include "gui/PlatformDelegate.h"
#include "gui/UserInterface.h"
#include "platform/DialogStyle.h"

#include <algorithm>

namespace gui {

namespace {

constexpr float rowHeight = 20.0f;
constexpr float rowIndent = 24.0f;
constexpr float choiceIndent = 6.0f;
constexpr float thumbWidth = 6.0f;
constexpr float thumbGap = 3.0f;  // around it
constexpr float leastThumb = 20.0f;

std::unique_ptr<Text> dialogText(UserInterface& ui, const std::string& string)
{
    auto text = ui.Platform().CreateText();
    text->Size.assign(DialogStyle::textPoints);
    text->Color.assign(DialogStyle::text);
    text->String.assign(string);
    return text;
}

}  // namespace

DialogButton::DialogButton(UserInterface& ui, Control* parent, const std::string& label,
                           std::function<void()> pressed)
    : Control(ui, parent), text(dialogText(ui, label)), action(std::move(pressed))
{
    DoubleClickEnabled.assign(false);
}

void DialogButton::SetDefault(bool is)
{
    isDefault = is;
    Invalidate();
}

void DialogButton::SetShowsChoice(bool shows)
{
    showsChoice = shows;
    text->MaxWidth.assign(GetWidth() - 2.0f * choiceIndent - 14.0f);
    text->LineStyle.assign(Text::LineStyle::Ellipsis);
    Invalidate();
}

void DialogButton::SetLabel(const std::string& label)
{
    text->String.assign(label);
    Invalidate();
}

void DialogButton::PaintContent(Canvas& canvas)
{
    const Rect client = GetClientRect();
    canvas.FillRect(client, isDefault ? DialogStyle::highlight : DialogStyle::border);
    canvas.FillRect(client.Inset(1.0f), isDown ? DialogStyle::pressedButton : DialogStyle::button);
    const float textTop = (GetHeight() - text->GetHeight()) * 0.5f;
    if (!showsChoice) {
        canvas.DrawBitmapAt(text->GetBitmap(), {(GetWidth() - text->GetWidth()) * 0.5f, textTop});
        return;
    }
    canvas.DrawBitmapAt(text->GetBitmap(), {choiceIndent, textTop});
    const Point tip{client.right - 11.0f, client.bottom * 0.5f + 2.0f};
    for (const float side : {-4.0f, 4.0f})
        canvas.DrawLine(tip + Point{side, -4.0f}, tip, client, DialogStyle::text, 1.5f);
}

void DialogButton::Clicked()
{
    Control::Clicked();
    action();
}

void DialogButton::MouseDown(int pressed, Point point, int inputFlags)
{
    isDown = pressed == MouseButton::left;
    Invalidate();
    Control::MouseDown(pressed, point, inputFlags);
}

void DialogButton::MouseUp(int released, Point point, int inputFlags)
{
    isDown = false;
    Invalidate();
    Control::MouseUp(released, point, inputFlags);
}

DialogText::DialogText(UserInterface& ui, Control* parent, const std::string& string, float maxWidth)
    : Control(ui, parent)
{
    Point size;
    for (std::size_t start = 0; start <= string.size();) {
        const std::size_t end = std::min(string.find('\n', start), string.size());
        auto line = dialogText(ui, string.substr(start, end - start));
        line->LineStyle.assign(Text::LineStyle::Wrapped);
        line->MaxWidth.assign(maxWidth);
        size = {std::max(size.x, line->GetWidth()), size.y + line->GetHeight()};
        lines.push_back(std::move(line));
        start = end + 1;
    }
    SetSize(size);
}

void DialogText::PaintContent(Canvas& canvas)
{
    float y = 0.0f;
    for (const auto& line : lines) {
        canvas.DrawBitmapAt(line->GetBitmap(), {0.0f, y});
        y += line->GetHeight();
    }
}

DialogList::DialogList(UserInterface& ui, Control* parent) : Control(ui, parent), text(dialogText(ui, {}))
{
    Opaque.assign(true);
}

void DialogList::SetEntries(std::vector<Entry> newEntries)
{
    const std::string kept = selected >= 0 ? entries[static_cast<std::size_t>(selected)].text : std::string();
    entries = std::move(newEntries);
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&kept](const Entry& entry) { return entry.text == kept; });
    selected = found != entries.end() ? static_cast<int>(found - entries.begin()) : -1;
    ScrollTo(offset);
}

void DialogList::Select(int index)
{
    selected = std::clamp(index, -1, static_cast<int>(entries.size()) - 1);
    if (selected >= 0) {
        const float top = static_cast<float>(selected) * rowHeight;
        ScrollTo(std::clamp(offset, top + rowHeight - GetHeight(), top));
        if (OnSelected)
            OnSelected(selected);
    }
    Invalidate();
}

void DialogList::ScrollTo(float wanted)
{
    offset = std::clamp(wanted, 0.0f, std::max(0.0f, ContentHeight() - GetHeight()));
    Invalidate();
}

float DialogList::ContentHeight() const { return static_cast<float>(entries.size()) * rowHeight; }

int DialogList::RowsPerPage() const { return std::max(1, static_cast<int>(GetHeight() / rowHeight) - 1); }

Rect DialogList::Thumb() const
{
    const float content = ContentHeight(), track = GetHeight() - 2.0f * thumbGap;
    if (content <= GetHeight())
        return {};
    const float length = std::max(track * GetHeight() / content, leastThumb);
    const float top = thumbGap + (track - length) * offset / (content - GetHeight());
    return Rect::At({GetWidth() - thumbGap - thumbWidth, top}, {thumbWidth, length});
}

int DialogList::RowAt(Point point) const
{
    const auto row = static_cast<int>((point.y + offset) / rowHeight);
    return row >= 0 && row < static_cast<int>(entries.size()) ? row : -1;
}

void DialogList::PaintContent(Canvas& canvas)
{
    const Rect client = GetClientRect();
    canvas.FillRect(client, DialogStyle::border);
    const Rect inside = client.Inset(1.0f);
    canvas.FillRect(inside, DialogStyle::field);
    const Canvas::State before = canvas.Save();
    canvas.Clip.assign(canvas.Clip.value().Intersected(inside));
    const int first = static_cast<int>(offset / rowHeight);
    const int last =
        std::min(static_cast<int>(entries.size()), static_cast<int>((offset + GetHeight()) / rowHeight) + 1);
    for (int i = first; i < last; ++i) {
        const Entry& entry = entries[static_cast<std::size_t>(i)];
        const float top = static_cast<float>(i) * rowHeight - offset;
        if (i == selected)
            canvas.FillRect({0.0f, top, GetWidth(), top + rowHeight}, DialogStyle::highlight);
        const Color color = i == selected ? DialogStyle::highlightedText : DialogStyle::text;
        if (entry.isFolder) {
            canvas.FillRect({6.0f, top + 5.0f, 12.0f, top + 7.0f}, color);
            canvas.FillRect({6.0f, top + 7.0f, 19.0f, top + 15.0f}, color);
        }
        text->Color.assign(color);
        text->String.assign(entry.text);
        canvas.DrawBitmapAt(text->GetBitmap(), {rowIndent, top + (rowHeight - text->GetHeight()) * 0.5f});
    }
    canvas.Restore(before);
    if (const Rect thumb = Thumb(); !thumb.IsEmpty())
        canvas.FillRect(thumb, dragsThumb ? DialogStyle::border : DialogStyle::separator);
}

void DialogList::MouseDown(int pressed, Point point, int inputFlags)
{
    const Rect thumb = Thumb();
    dragsThumb = pressed == MouseButton::left && !thumb.IsEmpty() && point.x >= thumb.left - thumbGap;
    if (dragsThumb) {
        const bool holds = point.y >= thumb.top && point.y < thumb.bottom;
        thumbGrip = holds ? point.y - thumb.top : thumb.Height() * 0.5f;
        MouseMoved(point, inputFlags);
    } else if (pressed == MouseButton::left) {
        Select(RowAt(point));
    }
    Control::MouseDown(pressed, point, inputFlags);
}

void DialogList::MouseMoved(Point point, int inputFlags)
{
    if (const Rect thumb = Thumb(); dragsThumb && !thumb.IsEmpty()) {
        const float room = GetHeight() - 2.0f * thumbGap - thumb.Height();
        ScrollTo((point.y - thumbGrip - thumbGap) / std::max(room, 1.0f) * (ContentHeight() - GetHeight()));
    }
    Control::MouseMoved(point, inputFlags);
}

void DialogList::MouseUp(int released, Point point, int inputFlags)
{
    dragsThumb = false;
    Invalidate();
    Control::MouseUp(released, point, inputFlags);
}

void DialogList::DoubleClicked()
{
    Control::DoubleClicked();
    if (!dragsThumb && selected >= 0 && OnOpened)
        OnOpened(selected);
}

bool DialogList::WheelDelta(Point, int, float delta, Orientation axis)
{
    if (axis != Orientation::Vertical)
        return false;
    ScrollTo(offset - delta);
    return true;
}

}  // namespace gui
