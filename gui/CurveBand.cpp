#include "gui/CurveBand.h"

#include <algorithm>
#include <cmath>

namespace gui {

std::vector<BandColumn> BandColumns(const ICurve& curve, int left, int right, float originX, float scale)
{
    constexpr float bend = 0.1f;  // of the value's change, within a few columns
    constexpr int nearColumns = 4;
    constexpr float drift = 0.01f;  // of the value itself, further on

    std::vector<BandColumn> columns;
    float lastChange = 0.0f;
    const int end = right + 2;
    for (int x = left; x <= end; ++x) {
        // A value that isn't a number counts as none.
        const float read = curve.ValueAt((static_cast<float>(x) - originX * scale) / scale);
        const float value = read > 0.0f ? std::min(read, 1.0f) : 0.0f;
        const bool outermost = x == left || x == end;
        const float change = columns.empty() ? 0.0f : value - columns.back().value;
        const bool isNear = !columns.empty() && x - columns.back().x <= nearColumns;
        if (outermost || (isNear ? std::abs(change - lastChange) > bend : std::abs(change) > drift)) {
            columns.push_back({x, value});
            lastChange = change;
        }
    }
    return columns;
}

}  // namespace gui
