#include "core/ChannelLayout.h"

#include <array>

namespace {

constexpr std::array<ChannelLayout, ChannelLayout::count> layouts{{
    {"Mono", 1},
    {"Stereo", 2},
    {"LCR", 3},
    {"Quadraphonic", 4},
    {"LCRS", 4},
    {"5.0", 5},
    {"5.1", 6},
    {"6.0", 6},
    {"6.1", 7},
    {"7.0 SDSS", 7},
    {"7.0 DTS", 7},
    {"7.1 SDSS", 8},
    {"7.1 DTS", 8},
    {"9.0.4 ITU", 13},
    {"9.1.4 ITU", 14},
    {"9.0.6 ITU", 15},
    {"9.1.6 ITU", 16},
    {"5.1.2 Dolby Atmos", 8},
    {"5.1.4 Dolby Atmos", 10},
    {"7.0.2 Dolby Atmos", 9},
    {"7.1.2 Dolby Atmos", 10},
    {"7.0.4 Dolby Atmos", 11},
    {"7.1.4 Dolby Atmos", 12},
    {"7.0.6 Dolby Atmos", 13},
    {"7.1.6 Dolby Atmos", 14},
    {"9.0.4 Dolby Atmos", 13},
    {"9.1.4 Dolby Atmos", 14},
    {"9.0.6 Dolby Atmos", 15},
    {"9.1.6 Dolby Atmos", 16},
}};

}  // namespace

const ChannelLayout& ChannelLayout::at(int index) noexcept
{
    return layouts[static_cast<std::size_t>(index)];
}
