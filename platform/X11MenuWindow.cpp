#include "platform/X11MenuWindow.h"

#include "foundation/TextCompare.h"
#include "gui/Menu.h"
#include "platform/DialogStyle.h"
#include "platform/X11Interface.h"

#include <algorithm>

namespace gui {

namespace {

// Logical units.
constexpr float edge = 4.0f;
constexpr float markWidth = 24.0f;   // check marks and icons
constexpr float arrowWidth = 24.0f;  // and the room right of a text
constexpr float rowPadding = 4.0f;   // above and below a text
constexpr float separatorHeight = 9.0f;
constexpr float leastMenuWidth = 80.0f;
constexpr float scrollEdge = 14.0f;  // where a long menu says that there is more

}  // namespace

X11MenuWindow::X11MenuWindow(X11Interface& ui, Menu& shownMenu)
    : interface(ui), menu(shownMenu), bitmap(ui.Backing())
{
    AddRows();
}

X11MenuWindow::~X11MenuWindow()
{
    surface.reset();
    if (window)
        xcb_destroy_window(interface.Connection(), window);
}

int X11MenuWindow::Device(float logical) const { return ToDevice(logical, interface.Backing().Scale()); }

float X11MenuWindow::Logical(int device) const
{
    return static_cast<float>(device) / interface.Backing().Scale();
}

void X11MenuWindow::AddRows()
{
    float widest = leastMenuWidth;
    int top = Device(edge);
    for (int i = 0; i < menu.ItemCount(); ++i) {
        MenuItem& item = *menu.GetItem(i);
        if (!item.Visible.value())
            continue;
        auto text = interface.Platform().CreateText();
        text->Size.assign(DialogStyle::textPoints);
        text->String.assign(item.IsSeparator() ? std::string() : item.Text.value());
        float height = separatorHeight;
        if (!item.IsSeparator()) {
            height = text->GetHeight() + 2.0f * rowPadding;
            if (item.Icon())
                height = std::max(height, item.Icon()->GetLogicalSize().y + rowPadding);
            widest = std::max(widest, text->GetWidth());
        }
        rows.push_back({&item, std::move(text), top, Device(height)});
        top += rows.back().height;
    }
    contentWidth = Device(markWidth + widest + arrowWidth);
    contentHeight = top + Device(edge);
}

void X11MenuWindow::Open(const DeviceRect& anchor, MenuPlacement::Side side, const DeviceRect& monitor)
{
    X11Connection& display = interface.Connection();
    screenRect = MenuPlacement::Place({contentWidth, contentHeight}, anchor, side, monitor);
    window = xcb_generate_id(display);
    const std::uint32_t values[] = {XCB_BACK_PIXMAP_NONE, 0, 1, 1, XCB_EVENT_MASK_EXPOSURE,
                                    display.Colormap()};
    xcb_create_window(
        display, static_cast<std::uint8_t>(display.WindowVisual().depth), window, display.RootWindow(),
        static_cast<std::int16_t>(screenRect.left), static_cast<std::int16_t>(screenRect.top),
        static_cast<std::uint16_t>(screenRect.Width()), static_cast<std::uint16_t>(screenRect.Height()), 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, display.WindowVisual().id,
        XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_SAVE_UNDER |
            XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
        values);
    display.SetProperty(window, display.Atom(X11Atom::NetWmWindowType), XCB_ATOM_ATOM,
                        std::vector<std::uint32_t>{display.Atom(X11Atom::NetWmWindowTypeMenu)});
    surface = std::make_unique<X11Surface>(display, window);
    bitmap.SetSize(Logical(screenRect.Width()), Logical(screenRect.Height()));
    xcb_map_window(display, window);
    Paint();
}

int X11MenuWindow::RowAt(BasicPoint<int> point) const
{
    if (!screenRect.Contains(point) || ScrollDirectionAt(point) != 0)
        return -1;
    const int y = point.y - screenRect.top + offset;
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (y >= rows[i].top && y < rows[i].top + rows[i].height)
            return static_cast<int>(i);
    return -1;
}

bool X11MenuWindow::HasMore(int direction) const
{
    return direction < 0 ? offset > 0 : offset < contentHeight - screenRect.Height();
}

int X11MenuWindow::ScrollDirectionAt(BasicPoint<int> point) const
{
    if (!screenRect.Contains(point))
        return 0;
    const int zone = Device(scrollEdge);
    if (HasMore(-1) && point.y < screenRect.top + zone)
        return -1;
    return HasMore(1) && point.y >= screenRect.bottom - zone ? 1 : 0;
}

DeviceRect X11MenuWindow::SubmenuAnchor(int row) const
{
    const Row& at = rows[static_cast<std::size_t>(row)];
    const int top = screenRect.top + at.top - offset - Device(edge);
    return {screenRect.left, top, screenRect.right, top + at.height};
}

Menu* X11MenuWindow::Submenu(int row) const
{
    return row < 0 ? nullptr : dynamic_cast<Menu*>(rows[static_cast<std::size_t>(row)].item);
}

bool X11MenuWindow::CanSelect(int row) const
{
    return row >= 0 && row < RowCount() && Item(row).Enabled.value() && !Item(row).IsSeparator();
}

int X11MenuWindow::NextRow(int row, int step) const
{
    const int count = RowCount();
    if (row < 0)
        row = step > 0 ? -1 : count;
    for (int i = 0; i < count; ++i) {
        row = (row + step + count) % count;
        if (CanSelect(row))
            return row;
    }
    return -1;
}

int X11MenuWindow::FindText(const std::string& typed, int row) const
{
    const int count = RowCount();
    for (int i = 0; i < count; ++i) {
        row = (row + 1) % count;
        if (CanSelect(row) && compareNoCase(Item(row).Text.value().substr(0, typed.size()), typed) == 0)
            return row;
    }
    return -1;
}

void X11MenuWindow::Select(int row)
{
    if (row == selected)
        return;
    selected = row;
    if (row >= 0) {
        // Into view.
        const Row& at = rows[static_cast<std::size_t>(row)];
        const bool isFirst = at.top <= Device(edge),
                   isLast = at.top + at.height + Device(edge) >= contentHeight;
        const int margin = Device(isFirst || isLast ? edge : scrollEdge);
        if (at.top - margin < offset)
            ScrollBy(at.top - margin - offset);
        else if (at.top + at.height + margin > offset + screenRect.Height())
            ScrollBy(at.top + at.height + margin - offset - screenRect.Height());
    }
    Paint();
}

void X11MenuWindow::ScrollBy(int pixels)
{
    const int wanted = std::clamp(offset + pixels, 0, std::max(0, contentHeight - screenRect.Height()));
    if (wanted == offset)
        return;
    offset = wanted;
    Paint();
}

void X11MenuWindow::Paint()
{
    if (!surface)
        return;
    Canvas& canvas = bitmap.GetCanvas();
    const Rect all = Rect::At({}, {Logical(screenRect.Width()), Logical(screenRect.Height())});
    canvas.Restore({all, 255, {}});
    const float line = Logical(1);
    canvas.FillRect(all, DialogStyle::border);
    canvas.FillRect(all.Inset(line), DialogStyle::menuBackground);
    for (std::size_t i = 0; i < rows.size(); ++i)
        PaintRow(canvas, rows[i], static_cast<int>(i) == selected);
    for (const int direction : {-1, 1})
        if (HasMore(direction))
            PaintEdge(canvas, direction);
    surface->Put(bitmap, {0, 0, screenRect.Width(), screenRect.Height()});
}

void X11MenuWindow::PaintRow(Canvas& canvas, const Row& row, bool isSelected)
{
    const float line = Logical(1);
    const Rect rect = Rect::At({line, Logical(row.top - offset)},
                               {Logical(screenRect.Width()) - 2.0f * line, Logical(row.height)});
    if (row.item->IsSeparator()) {
        const float middle = (rect.top + rect.bottom) * 0.5f;
        canvas.FillRect({rect.left + edge, middle, rect.right - edge, middle + line}, DialogStyle::separator);
        return;
    }
    const bool enabled = row.item->Enabled.value();
    if (isSelected && enabled)
        canvas.FillRect(rect, DialogStyle::highlight);
    const Color color = !enabled     ? DialogStyle::disabledText
                        : isSelected ? DialogStyle::highlightedText
                                     : DialogStyle::text;
    row.text->Color.assign(color);
    canvas.DrawBitmapAt(row.text->GetBitmap(),
                        {markWidth, rect.top + (rect.Height() - row.text->GetHeight()) * 0.5f});
    PaintMarks(canvas, row, rect, color);
}

// An arrow towards what is out of view.
void X11MenuWindow::PaintEdge(Canvas& canvas, int direction)
{
    const float line = Logical(1), width = Logical(screenRect.Width()), height = Logical(screenRect.Height());
    const float top = direction < 0 ? line : height - scrollEdge;
    const Rect strip = Rect::At({line, top}, {width - 2.0f * line, scrollEdge - line});
    canvas.FillRect(strip, DialogStyle::menuBackground);
    const auto way = static_cast<float>(direction);
    const Point tip{width * 0.5f, (strip.top + strip.bottom) * 0.5f + 2.0f * way};
    for (const float side : {-4.0f, 4.0f})
        canvas.DrawLine(tip + Point{side, -4.0f * way}, tip, strip, DialogStyle::text, 1.5f);
}

void X11MenuWindow::PaintMarks(Canvas& canvas, const Row& row, const Rect& rect, Color color)
{
    constexpr float stroke = 1.5f;
    const float y = (rect.top + rect.bottom) * 0.5f;
    if (row.item->Checked.value()) {
        canvas.DrawLine({8.0f, y}, {11.0f, y + 3.5f}, rect, color, stroke);
        canvas.DrawLine({11.0f, y + 3.5f}, {17.0f, y - 4.0f}, rect, color, stroke);
    } else if (const IBitmap* icon = row.item->Icon()) {
        const Point size = icon->GetLogicalSize();
        canvas.DrawBitmapAt(*icon, {(markWidth - size.x) * 0.5f, y - size.y * 0.5f});
    }
    if (dynamic_cast<const Menu*>(row.item)) {
        const float x = rect.right - 13.0f;
        canvas.DrawLine({x, y - 4.0f}, {x + 4.0f, y}, rect, color, stroke);
        canvas.DrawLine({x + 4.0f, y}, {x, y + 4.0f}, rect, color, stroke);
    }
}

}  // namespace gui
