#include "gui/Resampling.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace gui {

namespace {

// Weights add up to 2^14 exactly. Between the two passes the values keep 8 bits below the point, so that the
// sums of the second one stay below 2^31 even where the curve overshoots: 255 * 2^8 * 1.3 * 2^14.
constexpr int weightBits = 14;
constexpr int keptBits = 8;

/// The sources of one pixel of the result.
struct Taps {
    int first;
    int count;
    std::size_t weights;  // where they start in `Kernel::weights`
};

struct Kernel {
    std::vector<Taps> taps;
    std::vector<int> weights;
};

/// How much of the cell around `source` lies in [from, to].
double AreaWeight(int source, double from, double to)
{
    return std::max(0.0, std::min(to, source + 1.0) - std::max(from, static_cast<double>(source)));
}

/// Mitchell and Netravali's piecewise cubic with B = C = 1/3: neither blurred nor ringing.
double MitchellWeight(double x)
{
    x = std::abs(x);
    if (x < 1.0)
        return (7.0 * x * x * x - 12.0 * x * x + 16.0 / 3.0) / 6.0;
    if (x < 2.0)
        return (-7.0 / 3.0 * x * x * x + 12.0 * x * x - 20.0 * x + 32.0 / 3.0) / 6.0;
    return 0.0;
}

/// Appends `raw` as integers that sum up to 2^14; the largest takes what rounding leaves.
void AppendWeights(std::vector<int>& weights, const std::vector<double>& raw)
{
    double sum = 0.0;
    for (const double weight : raw)
        sum += weight;
    const std::size_t start = weights.size();
    int left = 1 << weightBits;
    for (const double weight : raw) {
        weights.push_back(static_cast<int>(std::lround(weight / sum * (1 << weightBits))));
        left -= weights.back();
    }
    *std::max_element(weights.begin() + static_cast<std::ptrdiff_t>(start), weights.end()) += left;
}

Kernel MakeKernel(int sourceSize, double ratio, int targetSize)
{
    const double step = 1.0 / ratio;
    Kernel kernel;
    std::vector<double> raw;
    for (int i = 0; i < targetSize; ++i) {
        const double from = std::min(i * step, sourceSize - 1.0);
        const double to = std::min((i + 1) * step, static_cast<double>(sourceSize));
        const double centre = (i + 0.5) * step - 0.5;
        const int reach = static_cast<int>(std::floor(centre)) - 1;
        const int first = ratio < 1.0 ? static_cast<int>(from) : std::clamp(reach, 0, sourceSize - 1);
        const int last =
            ratio < 1.0 ? static_cast<int>(std::ceil(to)) - 1 : std::clamp(reach + 3, first, sourceSize - 1);
        raw.assign(static_cast<std::size_t>(last - first + 1), 0.0);
        if (ratio < 1.0) {
            for (int source = first; source <= last; ++source)
                raw[static_cast<std::size_t>(source - first)] = AreaWeight(source, from, to);
        } else {
            // The edge stands for what lies beyond it.
            for (int source = reach; source <= reach + 3; ++source)
                raw[static_cast<std::size_t>(std::clamp(source, first, last) - first)] +=
                    MitchellWeight(source - centre);
        }
        kernel.taps.push_back({first, last - first + 1, kernel.weights.size()});
        AppendWeights(kernel.weights, raw);
    }
    return kernel;
}

constexpr std::size_t channels = 4;

/// One row scaled along x into four values a pixel, with alpha in place of T.
void ScaleRow(const std::uint32_t* row, const Kernel& kernel, int* out)
{
    for (const Taps& taps : kernel.taps) {
        int sums[channels] = {};
        for (int k = 0; k < taps.count; ++k) {
            const std::uint32_t pixel = row[taps.first + k] ^ 0xFF000000u;
            const int weight = kernel.weights[taps.weights + static_cast<std::size_t>(k)];
            for (std::size_t c = 0; c < channels; ++c)
                sums[c] += static_cast<int>(pixel >> (8 * c) & 0xFF) * weight;
        }
        for (const int sum : sums)
            *out++ = sum >> (weightBits - keptBits);
    }
}

std::uint32_t PackPixel(const int* sums)
{
    constexpr int shift = weightBits + keptBits;
    const auto rounded = [](int sum) { return (sum + (1 << (shift - 1))) >> shift; };
    const int alpha = std::clamp(rounded(sums[3]), 0, 255);
    std::uint32_t pixel = static_cast<std::uint32_t>(255 - alpha) << 24;
    for (int c = 0; c < 3; ++c)
        pixel |= static_cast<std::uint32_t>(std::clamp(rounded(sums[c]), 0, alpha)) << (8 * c);
    return pixel;
}

}  // namespace

void Resample(std::span<const std::uint32_t> pixels, BasicPoint<int> size, float ratio,
              BasicPoint<int> target, std::uint32_t* result)
{
    const Kernel across = MakeKernel(size.x, ratio, target.x);
    const Kernel down = MakeKernel(size.y, ratio, target.y);
    const std::size_t rowLength = static_cast<std::size_t>(target.x) * channels;
    std::vector<int> scaled(static_cast<std::size_t>(size.y) * rowLength);
    for (std::size_t y = 0; y < static_cast<std::size_t>(size.y); ++y)
        ScaleRow(pixels.data() + y * static_cast<std::size_t>(size.x), across, scaled.data() + y * rowLength);

    std::vector<int> sums(rowLength);
    for (const Taps& taps : down.taps) {
        std::fill(sums.begin(), sums.end(), 0);
        for (int k = 0; k < taps.count; ++k) {
            const int weight = down.weights[taps.weights + static_cast<std::size_t>(k)];
            const int* row = scaled.data() + static_cast<std::size_t>(taps.first + k) * rowLength;
            for (std::size_t i = 0; i < rowLength; ++i)
                sums[i] += row[i] * weight;
        }
        for (std::size_t i = 0; i < rowLength; i += channels)
            *result++ = PackPixel(sums.data() + i);
    }
}

}  // namespace gui
