#include "platform/MenuPlacement.h"

#include <algorithm>
#include <cstdint>

namespace gui {

namespace {

int fit(int wanted, int length, int low, int high) { return std::max(low, std::min(wanted, high - length)); }

/// Twice the area of the triangle, negative for one that turns the other way.
std::int64_t turn(BasicPoint<int> a, BasicPoint<int> b, BasicPoint<int> c)
{
    return std::int64_t{b.x - a.x} * (c.y - a.y) - std::int64_t{b.y - a.y} * (c.x - a.x);
}

}  // namespace

DeviceRect MenuPlacement::Place(BasicPoint<int> size, const DeviceRect& anchor, Side side,
                                const DeviceRect& monitor)
{
    const int height = std::min(size.y, monitor.Height());
    int x = anchor.left, y = anchor.top;
    if (side == Side::Below) {
        const int below = monitor.bottom - anchor.bottom, above = anchor.top - monitor.top;
        y = height <= below || below >= above ? anchor.bottom : anchor.top - height;
    } else {
        const int right = monitor.right - anchor.right, left = anchor.left - monitor.left;
        x = size.x <= right || right >= left ? anchor.right : anchor.left - size.x;
    }
    return DeviceRect::At(
        {fit(x, size.x, monitor.left, monitor.right), fit(y, height, monitor.top, monitor.bottom)},
        {size.x, height});
}

bool MenuPlacement::HeadsFor(const DeviceRect& submenu, BasicPoint<int> from, BasicPoint<int> to)
{
    constexpr int slack = 4;
    const bool isRight = submenu.left >= from.x - slack;
    if (isRight ? to.x <= from.x : to.x >= from.x)
        return false;
    const int edge = isRight ? submenu.left : submenu.right;
    const BasicPoint<int> top{edge, submenu.top - slack}, bottom{edge, submenu.bottom + slack};
    const std::int64_t first = turn(from, top, to), second = turn(from, to, bottom);
    return isRight ? first >= 0 && second >= 0 : first <= 0 && second <= 0;
}

}  // namespace gui
