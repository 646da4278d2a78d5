#pragma once

#include "gui/ICanvas.h"

#include <vector>

namespace gui {

/// A column of a curve band that is worked out; the value runs linearly to the next.
struct BandColumn {
    int x;        // device pixels
    float value;  // 0..1
};

/// The columns of `curve` from `left` to `right` + 2 that the band's outline needs: it bends there, or has
/// moved on by more than the eye would miss.
std::vector<BandColumn> BandColumns(const ICurve& curve, int left, int right, float originX, float scale);

}  // namespace gui
