#include "support/PngFile.h"

#include <zlib.h>

#include <algorithm>
#include <cstdlib>

namespace {

std::string BigEndian(std::uint32_t value)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift & 0xFF);
    return bytes;
}

/// What filter `type` takes from a byte, in the words of the format: `a` before it, `b` above, `c` above `a`.
int predict(int type, int a, int b, int c)
{
    const int p = a + b - c;
    const int best = std::min({std::abs(p - a), std::abs(p - b), std::abs(p - c)});
    const int paeth = std::abs(p - a) == best ? a : std::abs(p - b) == best ? b : c;
    const int values[] = {0, a, b, (a + b) / 2, paeth};
    return type < 5 ? values[type] : 0;
}

}  // namespace

std::string PngChunk(const std::string& type, const std::string& data)
{
    const std::string body = type + data;
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()));
    return BigEndian(static_cast<std::uint32_t>(data.size())) + body +
           BigEndian(static_cast<std::uint32_t>(sum));
}

std::string PngFile::Bytes() const
{
    const std::size_t bpp = colourType == 6 ? 4 : 3;
    const std::size_t stride = width * bpp;
    std::string raw;
    for (std::size_t y = 0; y < channels.size() / stride; ++y) {
        const int filter = filters[y % filters.size()];
        raw += static_cast<char>(filter);
        const auto at = [&](std::size_t row, std::size_t i) {
            return static_cast<int>(channels[row * stride + i]);
        };
        for (std::size_t i = 0; i < stride; ++i) {
            const int a = i >= bpp ? at(y, i - bpp) : 0;
            const int b = y > 0 ? at(y - 1, i) : 0;
            const int c = i >= bpp && y > 0 ? at(y - 1, i - bpp) : 0;
            raw += static_cast<char>(at(y, i) - predict(filter, a, b, c));
        }
    }
    uLongf size = compressBound(static_cast<uLong>(raw.size()));
    std::string packed(size, '\0');
    compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(raw.data()),
             static_cast<uLong>(raw.size()));
    packed.resize(size);

    std::string file = "\x89PNG\r\n\x1a\n";
    std::string header = BigEndian(width) + BigEndian(height);
    for (const std::uint8_t byte : {depth, colourType, compression, filterMethod, interlace})
        header += static_cast<char>(byte);
    file += PngChunk("IHDR", header);
    if (gamma != 0)
        file += PngChunk("gAMA", BigEndian(gamma));
    for (std::size_t start = 0; start < packed.size(); start += std::min(pieceSize, packed.size() - start))
        file += PngChunk("IDAT", packed.substr(start, pieceSize));
    return file + PngChunk("IEND", "");
}

std::string PngOf(const gui::IBitmap& bitmap)
{
    PngFile file;
    file.width = static_cast<std::uint32_t>(bitmap.GetSize().x);
    file.height = static_cast<std::uint32_t>(bitmap.GetSize().y);
    for (std::size_t i = 0; i < static_cast<std::size_t>(file.width) * file.height; ++i) {
        const gui::Color color = gui::FromPixel(bitmap.GetPixels()[i]);
        file.channels.insert(file.channels.end(), {color.r, color.g, color.b, color.a});
    }
    return file.Bytes();
}
