#include "gui/PNGFiler.h"

#include "foundation/Tolerance.h"
#include "gui/Bitmap.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

namespace gui {

namespace {

constexpr char signature[] = "\x89PNG\r\n\x1a\n";
constexpr std::size_t signatureSize = sizeof signature - 1;

// The product of a picture's usual gamma, 1 / 2.2, and that of a screen, 2.2, is about one.
constexpr float usualExponent = 1.010101f;
constexpr float exponentTimesGamma = 45454.547f;  // 100000 / 2.2: chunks hold 100000 times the gamma

// No compressed byte unfolds to more than this many.
constexpr std::uint64_t highestCompression = 1032;

[[noreturn]] void ThrowInvalid() { throw EBitmap("Invalid PNG image"); }

std::uint32_t BigEndian(const std::uint8_t* bytes)
{
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
           static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}

int Paeth(int a, int b, int c)
{
    const int estimate = a + b - c;
    const int toA = std::abs(estimate - a);
    const int toB = std::abs(estimate - b);
    const int toC = std::abs(estimate - c);
    if (toA <= toB && toA <= toC)
        return a;
    return toB <= toC ? b : c;
}

/// What filter `type` adds to a byte: `a` is the one before it, `b` the one above, `c` the one before that.
int Prediction(int type, int a, int b, int c)
{
    switch (type) {
    case 0:
        return 0;
    case 1:
        return a;
    case 2:
        return b;
    case 3:
        return (a + b) / 2;
    case 4:
        return Paeth(a, b, c);
    default:
        ThrowInvalid();
    }
}

void UndoFilter(std::vector<std::uint8_t>& row, const std::vector<std::uint8_t>& previous, std::size_t bpp)
{
    const int type = row[0];
    for (std::size_t i = 1; i < row.size(); ++i) {
        const int a = i > bpp ? row[i - bpp] : 0;
        const int c = i > bpp ? previous[i - bpp] : 0;
        row[i] = static_cast<std::uint8_t>(row[i] + Prediction(type, a, previous[i], c));
    }
}

/// Ends the inflater with the scope, whatever ends that.
struct InflaterScope {
    explicit InflaterScope(z_stream& opened) : inflater(opened)
    {
        if (inflateInit(&inflater) != Z_OK)
            ThrowInvalid();
    }
    ~InflaterScope() { inflateEnd(&inflater); }
    InflaterScope(const InflaterScope&) = delete;
    InflaterScope& operator=(const InflaterScope&) = delete;
    z_stream& inflater;
};

}  // namespace

float PNGFiler::gammaExponent = 0.0f;
std::array<std::uint8_t, 256> PNGFiler::gammaTable{};
float PNGFiler::displayGamma = 1.0f;

std::unique_ptr<BitmapFiler> PNGFilerFactory::Create(Bitmap& bitmap, std::istream& stream) const
{
    return PNGFiler::ReadSignature(stream) ? std::make_unique<PNGFiler>(bitmap) : nullptr;
}

bool PNGFiler::ReadSignature(std::istream& stream)
{
    char bytes[signatureSize] = {};
    stream.read(bytes, signatureSize);
    return std::equal(bytes, bytes + signatureSize, signature);
}

void PNGFiler::Read(std::istream& pictureStream)
{
    stream = &pictureStream;
    if (!ReadSignature(*stream))
        throw EBitmap("Invalid PNG signature");
    chunkPosition = static_cast<std::uint64_t>(stream->tellg());
    ReadHeader();
    CheckSize();
    bitmap.SetSourceSize(width, height);
    const std::uint64_t behindHeader = chunkPosition;
    ApplyGamma();
    chunkPosition = behindHeader;
    ReadPixels();
}

void PNGFiler::ReadHeader()
{
    NextChunk();
    if (!IsChunk("IHDR"))
        ThrowInvalid();
    std::uint8_t header[13];
    ReadBytes(header, sizeof header);
    width = static_cast<int>(BigEndian(header));
    height = static_cast<int>(BigEndian(header + 4));
    const int depth = header[8];
    const int colourType = header[9];
    const bool isPlain = header[10] == 0 && header[11] == 0 && header[12] == 0;
    if (width <= 0 || height <= 0 || depth != 8 || (colourType != 2 && colourType != 6) || !isPlain)
        throw EBitmap("Unsupported PNG format");
    bytesPerPixel = colourType == 2 ? 3 : 4;
}

void PNGFiler::CheckSize()
{
    // A few bytes that claim to be a picture of gigabytes mustn't take the memory for it.
    const auto position = stream->tellg();
    stream->seekg(0, std::ios::end);
    const auto left = static_cast<std::uint64_t>(stream->tellg() - position);
    stream->seekg(position);
    const auto rowSize = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(bytesPerPixel) + 1;
    if (rowSize > left * highestCompression / static_cast<std::uint64_t>(height))
        ThrowInvalid();
}

void PNGFiler::ApplyGamma()
{
    float exponent = usualExponent;
    do {
        NextChunk();
        if (IsChunk("gAMA")) {
            std::uint8_t gamma[4];
            ReadBytes(gamma, sizeof gamma);
            exponent = exponentTimesGamma / static_cast<float>(BigEndian(gamma));
            break;
        }
    } while (!IsChunk("IDAT") && !IsChunk("IEND"));

    exponent *= displayGamma;
    if (std::abs(exponent - gammaExponent) <= signalEpsilon)
        return;
    gammaExponent = exponent;
    for (std::size_t i = 0; i < gammaTable.size(); ++i)
        gammaTable[i] =
            static_cast<std::uint8_t>(std::pow(static_cast<float>(i) / 255.0f, exponent) * 255.0f);
}

void PNGFiler::ReadPixels()
{
    do
        NextChunk();
    while (!IsChunk("IDAT"));

    inflater = {};
    const InflaterScope scope(inflater);
    FillBuffer();
    Row rows[2];
    for (Row& row : rows)
        row.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(bytesPerPixel) + 1, 0);
    bool transparency = false;
    for (int y = 0; y < height; ++y) {
        Row& row = rows[y % 2];
        ReadRow(row);
        UndoFilter(row, rows[(y + 1) % 2], static_cast<std::size_t>(bytesPerPixel));
        transparency |= StoreRow(row, bitmap.Pixels() + static_cast<std::ptrdiff_t>(y) * width);
    }
    bitmap.Opaque.assign(!transparency);
}

void PNGFiler::ReadRow(Row& row)
{
    inflater.next_out = row.data();
    inflater.avail_out = static_cast<uInt>(row.size());
    while (inflater.avail_out > 0) {
        if (inflater.avail_in == 0)
            FillBuffer();
        const int result = inflate(&inflater, Z_SYNC_FLUSH);
        const bool endsInTime = result == Z_STREAM_END && inflater.avail_out == 0;
        // Nothing to read isn't an error: a chunk may be empty.
        const bool waits = result == Z_BUF_ERROR && inflater.avail_in == 0;
        if (result != Z_OK && !endsInTime && !waits)
            ThrowInvalid();
    }
}

bool PNGFiler::StoreRow(const Row& row, std::uint32_t* pixels) const
{
    bool transparency = false;
    const std::uint8_t* channels = row.data() + 1;
    for (int x = 0; x < width; ++x, channels += bytesPerPixel) {
        const std::uint8_t alpha = bytesPerPixel == 4 ? channels[3] : 255;
        transparency |= alpha < 255;
        pixels[x] =
            ToPixel({gammaTable[channels[0]], gammaTable[channels[1]], gammaTable[channels[2]], alpha});
    }
    return transparency;
}

void PNGFiler::NextChunk()
{
    stream->seekg(static_cast<std::streamoff>(chunkPosition));
    std::uint8_t header[8];
    ReadBytes(header, sizeof header);
    chunkLength = BigEndian(header);
    chunkRemaining = static_cast<int>(chunkLength);
    if (chunkRemaining < 0)
        ThrowInvalid();
    std::copy(header + 4, header + 8, chunkType.begin());
    constexpr int checksumSize = 4;
    chunkPosition += sizeof header + chunkLength + checksumSize;
}

void PNGFiler::FillBuffer()
{
    if (chunkRemaining < 1) {
        NextChunk();
        if (!IsChunk("IDAT"))
            ThrowInvalid();
    }
    const int count = std::min(chunkRemaining, static_cast<int>(buffer.size()));
    ReadBytes(buffer.data(), static_cast<std::size_t>(count));
    chunkRemaining -= count;
    inflater.next_in = buffer.data();
    inflater.avail_in = static_cast<uInt>(count);
}

void PNGFiler::ReadBytes(void* to, std::size_t count)
{
    stream->read(static_cast<char*>(to), static_cast<std::streamsize>(count));
    if (!*stream)
        ThrowInvalid();
}

}  // namespace gui
