#pragma once

#include "gui/Geometry.h"

#include <cstdint>
#include <span>

namespace gui {

/// Scales rows of premultiplied pixels by `ratio`, from the top left. Smaller by the average of the area that
/// a pixel comes to cover, larger by a smooth curve. Flat areas come out exactly, colours never exceed alpha.
/// @param pixels  `size.x` times `size.y`, both above 0
/// @param target  the size of the result, both above 0; what lies past the source repeats its edge
/// @param result  `target.x` times `target.y`; must not overlap `pixels`
void Resample(std::span<const std::uint32_t> pixels, BasicPoint<int> size, float ratio,
              BasicPoint<int> target, std::uint32_t* result);

}  // namespace gui
