#pragma once

#include "foundation/Realtime.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// The names of the positions of an indexed parameter. Lists are static or live as long as the parameters
/// that share them.
using ItemNames = std::span<const std::string_view>;

/// The positions of an indexed parameter: whole numbers from `minimum` to `maximum`, which travel as floats
/// and are cut toward zero. What they stand for, the raw values, are the same numbers unless there is a value
/// map.
struct IndexedValueFormat {
    /// Up to and with preset version `version` the positions ended at `limit`.
    struct VersionLimit {
        int limit;
        int version;
    };

    int minimum = 0;
    int maximum = 1;
    int initialPosition = 0;
    ItemNames items;  // of the positions from `minimum` on; without them values read as raw numbers
    std::span<const int> valueMap;
    int valueMapBase = 0;  // position of the map's first entry
    std::span<const VersionLimit> versionLimits;

    /// Cut and brought into the range; NaN is the minimum.
    int positionOf(float value) const noexcept REALTIME;
    int rawOf(int position) const noexcept REALTIME;
    int positionOfRaw(int raw) const noexcept REALTIME;

    float toNormal(float value) const noexcept REALTIME;
    float fromNormal(float normal) const noexcept REALTIME;
    float toNormalForVersion(float value, int version) const noexcept;
    std::optional<float> fromNormalForVersion(float normal, int version) const noexcept;
    int limitForVersion(int version) const noexcept;

    std::string text(float value) const;
    std::string shortText(float value, std::size_t maxChars) const;
    /// The position of an item name, by preference in the same case of letters, or of a number.
    std::optional<float> parse(std::string_view typed) const;
};
