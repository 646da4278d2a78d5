#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace gui {

/// Characters that follow each other in one direction.
struct DirectedRun {
    std::size_t start;
    std::size_t length;
    bool rightToLeft;
};

/// The runs of a line from left to right as they are shown. The first letter says which way the line as a
/// whole goes; figures go from left to right within either. Marks that embed or override are no more than
/// invisible characters, and brackets belong to what stands around them.
std::vector<DirectedRun> VisualRuns(std::u32string_view text);

}  // namespace gui
