#pragma once

#include <cstdint>

namespace gui {

// Rows of pixels in the format of `IBitmap`. Sources and destinations don't overlap.

/// Lays `source`, faded by `alpha` (0..255), over `row`.
void BlendRow(std::uint32_t* row, const std::uint32_t* source, int count, int alpha) noexcept;
/// The same with each pixel of the source faded by the mask's alpha too.
void BlendMaskedRow(std::uint32_t* row, const std::uint32_t* source, const std::uint32_t* mask, int count,
                    int alpha) noexcept;
/// Lays one pixel over all of `row`.
void BlendPixel(std::uint32_t* row, std::uint32_t pixel, int count) noexcept;
/// Lays one pixel over `row`, faded by 0..255 of each place.
void BlendCoverage(std::uint32_t* row, std::uint32_t pixel, const std::uint8_t* coverage, int count) noexcept;

/// One pixel faded by `alpha`, 0..255.
std::uint32_t FadedPixel(std::uint32_t pixel, int alpha) noexcept;

}  // namespace gui
