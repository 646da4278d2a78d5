#pragma once

#include "foundation/Realtime.h"

#include <string_view>

/// The channel layouts that plug-ins of this family know; an index selects one.
struct ChannelLayout {
    static constexpr int mono = 0;
    static constexpr int stereo = 1;
    static constexpr int count = 29;

    std::string_view name;
    int channels;

    /// @param index  0..count - 1
    static const ChannelLayout& at(int index) noexcept REALTIME;
};
