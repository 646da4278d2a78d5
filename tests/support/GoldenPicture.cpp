#include "support/GoldenPicture.h"

#include "gui/PNGFiler.h"
#include "support/PngFile.h"

#include <cmath>
#include <cstdlib>
#include <fstream>

namespace {

/// What differs on average over blocks of 4 by 4 pixels is seen; what only moves between neighbours isn't.
constexpr int block = 4;
constexpr double visible = 6.0;  // of 255

double channelSum(const gui::Bitmap& bitmap, int left, int top, int shift)
{
    const auto size = bitmap.GetSize();
    double sum = 0;
    for (int y = top; y < std::min(top + block, size.y); ++y) {
        for (int x = left; x < std::min(left + block, size.x); ++x)
            sum += bitmap.GetPixels()[static_cast<std::ptrdiff_t>(y) * size.x + x] >> shift & 0xFF;
    }
    return sum;
}

}  // namespace

std::string differenceFromPicture(const gui::Bitmap& bitmap, const std::string& folder,
                                  const std::string& name)
{
    const std::string path = folder + '/' + name + ".png";
    if (std::getenv("SORDELIN_UPDATE_PICTURES")) {
        std::ofstream(path, std::ios::binary) << PngOf(bitmap);
        return {};
    }
    gui::DeviceBacking backing;
    gui::Bitmap expected(backing);
    std::ifstream file(path, std::ios::binary);
    try {
        gui::PNGFiler(expected).Read(file);
    } catch (const gui::EBitmap& error) {
        return std::string(path).append(": ").append(error.what());
    }
    const auto size = bitmap.GetSize();
    if (size != expected.GetSize())
        return name + " has another size";
    for (int y = 0; y < size.y; y += block) {
        for (int x = 0; x < size.x; x += block) {
            for (const int shift : {0, 8, 16, 24}) {
                const double difference = channelSum(bitmap, x, y, shift) - channelSum(expected, x, y, shift);
                if (std::abs(difference) > visible * block * block)
                    return name + " differs at " + std::to_string(x) + ", " + std::to_string(y);
            }
        }
    }
    return {};
}
