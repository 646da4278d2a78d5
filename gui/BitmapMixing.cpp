#include "gui/BitmapMixing.h"

#include "gui/Bitmap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace gui {

namespace {

constexpr std::uint32_t nothing = 0xFF000000;  // a pixel without colour or coverage

/// Weights of the four neighbours of a place, `t` of the way from the second to the third: the cubic through
/// the samples with the slopes of their neighbours (Catmull and Rom).
std::array<float, 4> CubicWeights(float t)
{
    return {((-0.5f * t + 1.0f) * t - 0.5f) * t, (1.5f * t - 2.5f) * t * t + 1.0f,
            ((-1.5f * t + 2.0f) * t + 0.5f) * t, (0.5f * t - 0.5f) * t * t};
}

/// Channels of a pixel with its coverage instead of the transparency.
struct Sample {
    std::array<float, 4> channels{};  // blue, green, red, alpha

    void Add(std::uint32_t pixel, float weight)
    {
        for (int c = 0; c < 3; ++c)
            channels[static_cast<std::size_t>(c)] += weight * static_cast<float>(pixel >> (8 * c) & 255);
        channels[3] += weight * static_cast<float>(255 - (pixel >> 24));
    }

    std::uint32_t Pack() const
    {
        // The cubic overshoots at edges; no colour may exceed its alpha.
        const auto alpha = static_cast<std::uint32_t>(std::clamp(channels[3], 0.0f, 255.0f) + 0.5f);
        std::uint32_t pixel = (255 - alpha) << 24;
        for (int c = 0; c < 3; ++c) {
            const float channel = std::max(channels[static_cast<std::size_t>(c)], 0.0f) + 0.5f;
            pixel |= std::min(static_cast<std::uint32_t>(channel), alpha) << (8 * c);
        }
        return pixel;
    }
};

class Turned {
public:
    explicit Turned(const Bitmap& picture)
        : pixels(picture.GetPixels()), width(picture.GetSize().x), height(picture.GetSize().y)
    {}

    std::uint32_t At(float x, float y) const
    {
        const float left = std::floor(x);
        const float top = std::floor(y);
        if (left < -2.0f || top < -2.0f || left > static_cast<float>(width) ||
            top > static_cast<float>(height))
            return nothing;
        const auto across = CubicWeights(x - left);
        const auto down = CubicWeights(y - top);
        Sample sample;
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column)
                sample.Add(Pixel(static_cast<int>(left) - 1 + column, static_cast<int>(top) - 1 + row),
                           across[static_cast<std::size_t>(column)] * down[static_cast<std::size_t>(row)]);
        return sample.Pack();
    }

private:
    std::uint32_t Pixel(int x, int y) const
    {
        return x >= 0 && x < width && y >= 0 && y < height
                   ? pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                            static_cast<std::size_t>(x)]
                   : nothing;
    }

    const std::uint32_t* pixels;
    int width;
    int height;
};

void MakeSize(Bitmap& out, const Bitmap& like)
{
    if (out.GetSize() != like.GetSize())
        out.SetSize(like.GetLogicalSize().x, like.GetLogicalSize().y);
}

}  // namespace

void CrossfadeBitmaps(Bitmap& out, const Bitmap* from, const Bitmap* to, int blend)
{
    const Bitmap& like = from ? *from : *to;
    MakeSize(out, like);
    const BasicPoint<int> size = out.GetSize();
    const auto isUsable = [&](const Bitmap* bitmap) { return bitmap && bitmap->GetSize() == size; };
    const std::uint32_t* const a = isUsable(from) ? from->GetPixels() : nullptr;
    const std::uint32_t* const b = isUsable(to) ? to->GetPixels() : nullptr;
    std::uint32_t* const mixed = out.Pixels();
    const std::size_t count = static_cast<std::size_t>(size.x) * static_cast<std::size_t>(size.y);
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t p = a ? a[i] : nothing;
        const std::uint32_t q = b ? b[i] : nothing;
        std::uint32_t result = 0;
        for (int shift = 0; shift < 32; shift += 8) {
            const int mix = static_cast<int>(p >> shift & 255) * (255 - blend) +
                            static_cast<int>(q >> shift & 255) * blend;
            result |= static_cast<std::uint32_t>((mix + 127) / 255) << shift;
        }
        mixed[i] = result;
    }
    out.MarkDirty({0, 0, size.x, size.y});
}

void RotateBitmap(Bitmap& out, const Bitmap& picture, float turns)
{
    MakeSize(out, picture);
    const BasicPoint<int> size = out.GetSize();
    if (!picture.GetPixels() || size != picture.GetSize())
        return;
    const float radians = turns * 2.0f * std::numbers::pi_v<float>;
    const float sine = std::sin(radians);
    const float cosine = std::cos(radians);
    const float middleX = static_cast<float>(size.x) * 0.5f;
    const float middleY = static_cast<float>(size.y) * 0.5f;
    const Turned source(picture);
    std::uint32_t* pixel = out.Pixels();
    for (int y = 0; y < size.y; ++y) {
        const float dy = static_cast<float>(y) + 0.5f - middleY;
        for (int x = 0; x < size.x; ++x) {
            const float dx = static_cast<float>(x) + 0.5f - middleX;
            *pixel++ =
                source.At(dx * cosine + dy * sine + middleX - 0.5f, dy * cosine - dx * sine + middleY - 0.5f);
        }
    }
    out.MarkDirty({0, 0, size.x, size.y});
}

}  // namespace gui
