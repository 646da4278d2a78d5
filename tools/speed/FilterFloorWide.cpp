#define SORDELIN_VECTOR_VARIANT avx2floor

#include "speed/FilterFloorWide.h"

#include "speed/FilterFloorLoop.h"

void runWideFilterFloor(float* samples, int count) noexcept
{
    static FilterFloorLoop<Float8> loop;
    static Float4 between;
    Float4 carried = between;
    loop.run(
        count, [&](int i) { return Float8(Float4::load(samples + 4 * i), carried); },
        [&](int i, const Float8& out) {
            carried = out.lower();
            out.upper().store(samples + 4 * i);
        });
    between = carried;
}
