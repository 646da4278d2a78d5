#pragma once

#include "gui/Bitmap.h"
#include "gui/Text.h"
#include "platform/MenuPlacement.h"
#include "platform/X11Surface.h"

#include <memory>
#include <string>
#include <vector>

namespace gui {

class Menu;
class MenuItem;
class X11Interface;

/// One open level of a popup menu: a window over all others, with a row for each visible entry. What is too
/// long for the screen scrolls.
class X11MenuWindow {
public:
    X11MenuWindow(X11Interface& ui, Menu& shownMenu);
    ~X11MenuWindow();
    X11MenuWindow(const X11MenuWindow&) = delete;
    X11MenuWindow& operator=(const X11MenuWindow&) = delete;

    /// Opens at a place beside the anchor, device pixels of the screen.
    void Open(const DeviceRect& anchor, MenuPlacement::Side side, const DeviceRect& monitor);

    xcb_window_t Window() const { return window; }
    const DeviceRect& ScreenRect() const { return screenRect; }
    int RowCount() const { return static_cast<int>(rows.size()); }
    /// The row at a point of the screen; -1 for none.
    int RowAt(BasicPoint<int> point) const;
    /// What a row's submenu opens beside, so that its first entry lies level with the row.
    DeviceRect SubmenuAnchor(int row) const;
    MenuItem& Item(int row) const { return *rows[static_cast<std::size_t>(row)].item; }
    Menu* Submenu(int row) const;
    bool CanSelect(int row) const;
    /// The next row that can be selected, from `row` on in steps of 1 or -1, around the ends; -1 for none.
    int NextRow(int row, int step) const;
    /// The next row after `row` whose text begins with `typed`, whatever its case; -1 for none.
    int FindText(const std::string& typed, int row) const;

    int Selected() const { return selected; }
    void Select(int row);  // -1 for none
    /// Device pixels downwards.
    void ScrollBy(int pixels);
    /// -1 or 1 where a point of the screen lies at an edge beyond which there is more; else 0.
    int ScrollDirectionAt(BasicPoint<int> point) const;
    void Paint();

private:
    struct Row {
        MenuItem* item;
        std::unique_ptr<Text> text;
        int top;  // device pixels of the content
        int height;
    };

    void AddRows();
    void PaintRow(Canvas& canvas, const Row& row, bool isSelected);
    void PaintEdge(Canvas& canvas, int direction);
    bool HasMore(int direction) const;
    void PaintMarks(Canvas& canvas, const Row& row, const Rect& rect, Color color);
    int Device(float logical) const;
    float Logical(int device) const;

    X11Interface& interface;
    Menu& menu;
    xcb_window_t window = XCB_WINDOW_NONE;
    std::vector<Row> rows;
    int contentWidth = 0;
    int contentHeight = 0;
    int offset = 0;  // how far it is scrolled
    int selected = -1;
    DeviceRect screenRect;
    Bitmap bitmap;
    std::unique_ptr<X11Surface> surface;
};

}  // namespace gui
