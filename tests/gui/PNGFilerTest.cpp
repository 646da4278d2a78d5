#include "gui/PNGFiler.h"

#include "gui/Bitmap.h"
#include "support/PngFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

namespace gui {

namespace {

struct PNGReading : testing::Test {
    ~PNGReading() override { PNGFiler::SetDisplayGamma(1.0f); }
    std::string Read(const std::string& bytes)
    {
        std::istringstream stream(bytes);
        try {
            PNGFiler(bitmap).Read(stream);
        } catch (const EBitmap& error) {
            return error.what();
        }
        return {};
    }
    std::vector<std::uint32_t> Pixels()
    {
        return {bitmap.Pixels(), bitmap.Pixels() + bitmap.GetSize().x * bitmap.GetSize().y};
    }
    DeviceBacking backing;
    Bitmap bitmap{backing};
};

PngFile Noise(int bytesPerPixel, std::uint32_t width, std::uint32_t height)
{
    std::minstd_rand random(11);
    PngFile file;
    file.width = width;
    file.height = height;
    file.colourType = bytesPerPixel == 4 ? 6 : 2;
    for (std::uint32_t i = 0; i < width * height * static_cast<std::uint32_t>(bytesPerPixel); ++i)
        file.channels.push_back(static_cast<std::uint8_t>(random() >> 7));
    return file;
}

}  // namespace

TEST_F(PNGReading, EveryFilterAndAnyChunksGiveTheSamePixels)
{
    for (const int bytesPerPixel : {3, 4}) {
        PngFile file = Noise(bytesPerPixel, 13, 12);
        std::vector<std::uint32_t> expected;
        for (auto channel = file.channels.begin(); channel != file.channels.end(); channel += bytesPerPixel) {
            // An exponent of 45454.547 / 45455 leaves all but the ends one lower.
            const auto darker = [](std::uint8_t c) {
                return static_cast<std::uint8_t>(std::pow(c / 255.0f, 45454.547f / 45455.0f) * 255.0f);
            };
            const std::uint8_t alpha = bytesPerPixel == 4 ? channel[3] : 255;
            expected.push_back(ToPixel({darker(channel[0]), darker(channel[1]), darker(channel[2]), alpha}));
        }
        for (const std::vector<std::uint8_t>& filters :
             std::vector<std::vector<std::uint8_t>>{{0}, {1}, {2}, {3}, {4}, {4, 3, 2, 1, 0}}) {
            file.filters = filters;
            for (const std::size_t pieceSize : {std::size_t{1} << 30, std::size_t{100}, std::size_t{1}}) {
                file.pieceSize = pieceSize;
                EXPECT_EQ(Read(file.Bytes()), "");
                EXPECT_EQ(Pixels(), expected) << bytesPerPixel << ' ' << int(filters[0]) << ' ' << pieceSize;
            }
        }
    }
}

TEST_F(PNGReading, TonesFollowTheGammaOfTheFileAndTheDisplay)
{
    PngFile file;
    file.colourType = 2;
    struct Row {
        std::uint32_t gamma;
        float display, exponent;
    };
    for (const auto& [gamma, display, exponent] :
         {Row{0, 1.0f, 1.010101f}, Row{0, 1.1f, 1.1111111f}, Row{45455, 1.0f, 1.0f},
          Row{100000, 1.0f, 0.4545455f}, Row{22727, 1.1f, 2.2f}}) {
        PNGFiler::SetDisplayGamma(display);
        file.gamma = gamma;
        for (const int tone : {0, 1, 64, 128, 200, 255}) {
            file.channels = {static_cast<std::uint8_t>(tone), 0, 255};
            ASSERT_EQ(Read(file.Bytes()), "");
            EXPECT_NEAR(static_cast<int>(Pixels()[0] >> 16),
                        std::floor(255 * std::pow(tone / 255.0, exponent)), 1)
                << gamma << ' ' << tone;
            EXPECT_EQ(Pixels()[0] & 0xFFFF, 0xFFu);
        }
    }
}

TEST_F(PNGReading, TransparencyIsWhatThePixelsShow)
{
    PngFile file;
    file.width = 2;
    file.channels = {1, 2, 3, 255, 4, 5, 6, 255};
    EXPECT_EQ(Read(file.Bytes()), "");
    EXPECT_TRUE(bitmap.Opaque.value());
    file.channels[3] = 254;
    EXPECT_EQ(Read(file.Bytes()), "");
    EXPECT_FALSE(bitmap.Opaque.value());
}

TEST_F(PNGReading, OtherKindsAreRefused)
{
    const auto refused = [this](auto change) {
        PngFile file = Noise(4, 2, 2);
        change(file);
        EXPECT_EQ(Read(file.Bytes()), "Unsupported PNG format");
    };
    refused([](PngFile& file) { file.depth = 16; });
    refused([](PngFile& file) { file.colourType = 3; });
    refused([](PngFile& file) { file.colourType = 0; });
    refused([](PngFile& file) { file.interlace = 1; });
    refused([](PngFile& file) { file.compression = 1; });
    refused([](PngFile& file) { file.filterMethod = 1; });
    refused([](PngFile& file) { file.height = 0; });
    refused([](PngFile& file) { file.channels.clear(), file.width = 0xFFFFFFFF; });
}

TEST_F(PNGReading, DamagedFilesAreInvalid)
{
    const std::string good = Noise(4, 9, 9).Bytes();
    EXPECT_EQ(Read(""), "Invalid PNG signature");
    EXPECT_EQ(Read("\x89PNG\r\n\x1a\r" + good.substr(8)), "Invalid PNG signature");
    EXPECT_EQ(Read(good.substr(0, 8) + PngChunk("IDAT", "")), "Invalid PNG image");
    EXPECT_EQ(Read(good.substr(0, good.find("IDAT") + 20)), "Invalid PNG image");
    EXPECT_EQ(Read(good.substr(0, good.find("gAMA") - 4) + PngChunk("IEND", "")), "Invalid PNG image");
    EXPECT_EQ(Read(good.substr(0, good.find("gAMA") - 4)), "Invalid PNG image");
    PngFile file = Noise(4, 9, 9);
    file.filters = {5};
    EXPECT_EQ(Read(file.Bytes()), "Invalid PNG image");
    file = Noise(4, 9, 8);
    file.height = 9;  // a row is missing
    EXPECT_EQ(Read(file.Bytes()), "Invalid PNG image");
    file.width = file.height = 0x7FFFFFFF;  // no memory is taken for what can't follow
    file.channels.clear();
    EXPECT_EQ(Read(file.Bytes()), "Invalid PNG image");
    std::string longer = good;
    longer[good.find("IDAT") - 4] = '\x7F';  // a chunk that claims to be of two gigabytes
    EXPECT_EQ(Read(longer), "Invalid PNG image");
}

}  // namespace gui
