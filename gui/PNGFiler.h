#pragma once

#include "gui/BitmapFiler.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include <zlib.h>

namespace gui {

/// Reads PNG pictures of eight bits a channel, true colour with or without alpha, not interlaced. Checksums
/// of chunks aren't verified. Thread: main; all filers share one gamma table.
class PNGFiler : public BitmapFiler {
public:
    explicit PNGFiler(Bitmap& target) : bitmap(target) {}

    /// Throws EBitmap: "Invalid PNG signature", "Invalid PNG image" or "Unsupported PNG format".
    void Read(std::istream& pictureStream) override;

    /// True if the next eight bytes are those that every PNG file begins with.
    static bool ReadSignature(std::istream& stream);
    /// The exponent that pictures read from now on are darkened by on top of their own; 1 at first.
    static void SetDisplayGamma(float exponent) { displayGamma = exponent; }

private:
    using Row = std::vector<std::uint8_t>;  // the filter's type, then the channels of the pixels

    void ReadHeader();
    void ApplyGamma();
    void ReadPixels();
    void ReadRow(Row& row);
    bool StoreRow(const Row& row, std::uint32_t* pixels) const;
    void NextChunk();
    void FillBuffer();
    bool IsChunk(std::string_view type) const { return std::string_view(chunkType.data(), 4) == type; }
    void ReadBytes(void* to, std::size_t count);
    void CheckSize();

    Bitmap& bitmap;
    std::istream* stream = nullptr;
    std::array<std::uint8_t, 1024> buffer{};  // compressed data
    std::uint32_t chunkLength = 0;
    int chunkRemaining = 0;  // bytes of the chunk that are still to be read
    std::array<char, 4> chunkType{};
    std::uint64_t chunkPosition = 0;  // of the next chunk
    int bytesPerPixel = 0;
    int width = 0;
    int height = 0;
    z_stream inflater{};

    static float gammaExponent;  // the one that `gammaTable` was made for
    static std::array<std::uint8_t, 256> gammaTable;
    static float displayGamma;
};

class PNGFilerFactory : public BitmapFilerFactory {
public:
    std::unique_ptr<BitmapFiler> Create(Bitmap& bitmap, std::istream& stream) const override;
};

}  // namespace gui
