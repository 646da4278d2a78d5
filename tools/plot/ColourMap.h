#pragma once

#include <array>
#include <cstdint>

/// The colours of loudness, from ink through plum, ember and amber to cream.
///
/// Equal steps of the level are equal steps of perceived lightness, so that nothing looks louder than it is.
class ColourMap {
public:
    ColourMap();

    /// 0xRRGGBB.
    /// @param level  0..1; beyond that the end colours
    std::uint32_t at(double level) const noexcept;

private:
    std::array<std::uint32_t, 256> colours{};
};
