#include "modulation/EnvelopeShape.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

struct Row {
    float curvature;
    EnvelopeShape shape;
};

constexpr Row rows[] = {
    {-1.0f, {0.30000019f, 0.39999962f, 0.30000019f, 0.0f, 0.0f}},
    {0.0f, {0.0f, 0.0f, 0.0f, 0.0f, 1.0f}},
    {0.2f, {-3.0f, 10.0f, -12.625f, 6.625f, 0.0f}},
    {0.5f, {0.0f, 0.0f, 0.0f, -1.0f, 2.0f}},
    {0.6f, {-0.525f, 1.45f, -0.825f, -1.6f, 2.5f}},
    {1.0f, {0.30000019f, -1.9000006f, 4.9000006f, -6.3f, 4.0f}},
};

}  // namespace

EnvelopeShape EnvelopeShape::of(float curvature) noexcept
{
    const Row* const above = std::find_if(std::begin(rows), std::end(rows),
                                          [curvature](const Row& row) { return row.curvature > curvature; });
    if (above == std::begin(rows))
        return above->shape;
    const EnvelopeShape& a = std::prev(above)->shape;
    if (above == std::end(rows))
        return a;
    const EnvelopeShape& b = above->shape;
    const float part =
        (curvature - std::prev(above)->curvature) / (above->curvature - std::prev(above)->curvature);
    const auto between = [part](float from, float to) { return from + (to - from) * part; };
    return {between(a.c5, b.c5), between(a.c4, b.c4), between(a.c3, b.c3), between(a.c2, b.c2),
            between(a.c1, b.c1)};
}

double EnvelopeShape::positionFrom(const EnvelopeShape& other, double position) const noexcept
{
    if (position <= 1.1920929e-7 || position >= EnvelopePlace::end)
        return position;
    const double level = std::clamp(other(position), 0.0, 1.0);
    double low = 0.0;
    double high = 1.0;
    for (int halving = 0; halving < 20; ++halving) {  // to a millionth, which nobody hears as a step
        const double middle = 0.5 * (low + high);
        ((*this)(middle) < level ? low : high) = middle;
    }
    return 0.5 * (low + high);
}

void EnvelopeWriter::hold(float value, int count) noexcept
{
    if (count < 1)
        return;
    steady = steady && (written == 0 || out[0] == value);
    std::fill_n(out + written, count, value);
    written += count;
}

void EnvelopeWriter::curve(const EnvelopeShape& shape, EnvelopePlace& place, float height, float end,
                           int count) noexcept
{
    const double step = place.step;
    const double left = std::ceil((EnvelopePlace::end - place.position) / step);
    const int moving = static_cast<int>(std::clamp(left, 0.0, static_cast<double>(count)));
    const EnvelopeShape polynomial = shape;
    const double from = place.position;
    float* const to = out + written;
    // Rounding may carry the polynomial beyond its end.
    for (int i = 0; i < moving; ++i)
        to[i] = static_cast<float>(end - std::max(1.0 - polynomial(from + i * step), 0.0) * height);
    written += moving;
    steady = steady && moving == 0;
    place.position += moving * step;
    hold(end, count - moving);
}
