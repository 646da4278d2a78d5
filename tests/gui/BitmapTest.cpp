#include "gui/Bitmap.h"

#include "foundation/Resources.h"
#include "support/PngFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

namespace gui {

namespace {

struct BitmapTest : testing::Test {
    std::uint32_t At(int x, int y) const
    {
        return bitmap.GetPixels()[static_cast<std::ptrdiff_t>(y) * bitmap.GetSize().x + x];
    }
    DeviceBacking backing;
    Bitmap bitmap{backing};
};

std::vector<DeviceRect> Regions(const Bitmap& bitmap)
{
    return {bitmap.GetDirtyRegions().begin(), bitmap.GetDirtyRegions().end()};
}

PngFile FlatPicture(std::uint32_t width, std::uint32_t height)
{
    PngFile file;
    file.width = width;
    file.height = height;
    for (std::uint32_t i = 0; i < width * height; ++i)
        file.channels.insert(file.channels.end(), {200, 100, 50, 128});
    return file;
}

}  // namespace

TEST_F(BitmapTest, NewPixelsAreTransparentAndReadAsNothingOutside)
{
    backing.SetLevel(2);
    bitmap.SetSize(3.3f, 1.0f);  // 4.95 + 0.7, 1.5 + 0.7
    EXPECT_EQ(bitmap.GetSize(), (BasicPoint<int>{5, 2}));
    EXPECT_EQ(At(4, 1), 0xFF000000u);
    bitmap.FillRect({0, 0, 9, 9}, gui::Color::Rgb(0x123456));
    EXPECT_EQ(At(4, 1), 0x00123456u);
    EXPECT_EQ(bitmap.GetPixel({1, 0.5f}), gui::Color::Rgb(0x123456));
    EXPECT_EQ(bitmap.GetPixel({-1, 0}), gui::Color());
    EXPECT_EQ(bitmap.GetPixel({0, 9}), gui::Color());
    bitmap.Clear();
    EXPECT_EQ(At(0, 0), 0xFF000000u);
}

TEST_F(BitmapTest, APixelReadBackIsDividedByItsAlpha)
{
    bitmap.SetSize(1, 1);
    bitmap.SetPixel({0, 0}, {200, 100, 50, 128});
    // 200 * 128 + 128 = 25728, (25728 + 100) >> 8 = 100; likewise 50 and 25; and back 100 * 255 / 128 = 199.
    EXPECT_EQ(At(0, 0), 0x7F643219u);
    EXPECT_EQ(bitmap.GetPixel({0, 0}), (gui::Color{199, 99, 49, 128}));
}

TEST_F(BitmapTest, ColorizeTurnsDarknessIntoAlpha)
{
    bitmap.SetSize(3, 1);
    bitmap.Pixels()[0] = 0x00000000;
    bitmap.Pixels()[1] = 0x007F7F7F;
    bitmap.Pixels()[2] = 0x00FFFFFF;
    bitmap.Colorize({255, 0, 0, 200});
    EXPECT_EQ(At(0, 0), 0x37C80000u);
    EXPECT_EQ(At(1, 0), 0x9B640000u);  // 128 of 200: 100
    EXPECT_EQ(At(2, 0), 0xFF000000u);
}

TEST_F(BitmapTest, ChangedRegionsMergeWhereItCostsLeast)
{
    bitmap.SetSize(100, 100);
    bitmap.SetTexture(nullptr);
    bitmap.MarkDirty({});
    EXPECT_EQ(bitmap.GetUploadState(), IBitmap::UploadState::Partial);
    EXPECT_TRUE(Regions(bitmap).empty());

    struct Row {
        DeviceRect marked;
        std::vector<DeviceRect> regions;
    };
    const DeviceRect a{0, 0, 10, 10};
    const DeviceRect b{50, 50, 60, 60};
    const DeviceRect c{90, 0, 100, 10};
    for (const Row& row :
         {Row{a, {a}}, Row{b, {a, b}},
          Row{{10, 0, 15, 10}, {{0, 0, 15, 10}, b}},  // side by side: nothing is added
          Row{c, {{0, 0, 15, 10}, b, c}}, Row{{70, 70, 71, 71}, {{0, 0, 15, 10}, {50, 50, 71, 71}, c}},
          Row{{52, 52, 53, 53}, {{0, 0, 15, 10}, {50, 50, 71, 71}, c}}}) {
        bitmap.MarkDirty(row.marked);
        EXPECT_EQ(Regions(bitmap), row.regions) << row.marked.left;
    }
    bitmap.SetTexture(nullptr);
    EXPECT_EQ(bitmap.GetUploadState(), IBitmap::UploadState::Current);
    EXPECT_TRUE(Regions(bitmap).empty());
}

TEST_F(BitmapTest, APictureIsScaledFromWhatWasReadAtEveryScale)
{
    std::istringstream stream(FlatPicture(21, 10).Bytes());
    bitmap.ReadSource(stream, 2.0f);
    EXPECT_EQ(bitmap.GetLogicalSize(), (Point{10.5f, 5.0f}));
    EXPECT_FALSE(bitmap.Opaque.value());
    for (const int level : {4, 0, 1, 2, 3, 5, 6, 7, 4}) {
        backing.SetLevel(level);
        const float ratio = backing.Scale() / 2.0f;
        EXPECT_EQ(bitmap.GetSize(), (BasicPoint<int>{static_cast<int>(21 * ratio + 0.7f),
                                                     static_cast<int>(10 * ratio + 0.7f)}));
        const std::uint32_t* end = bitmap.GetPixels() + bitmap.GetSize().x * bitmap.GetSize().y;
        EXPECT_TRUE(std::all_of(bitmap.GetPixels(), end, [&](std::uint32_t pixel) {
            return pixel == At(0, 0);
        })) << level;
    }
}

TEST_F(BitmapTest, HalvingAveragesFourPixelsAndWeighsThemByAlpha)
{
    PngFile file;
    file.width = 2;
    file.height = 2;
    file.channels = {255, 0, 0, 255, 0, 255, 0, 0, 255, 0, 0, 255, 0, 255, 0, 0};
    std::istringstream stream(file.Bytes());
    bitmap.ReadSource(stream, 2.0f);
    ASSERT_EQ(bitmap.GetSize(), (BasicPoint<int>{1, 1}));
    // Half covered by red; the invisible green leaves no trace. 127.5 rounds up.
    EXPECT_EQ(At(0, 0), 0x7F800000u);
}

TEST_F(BitmapTest, NoColourExceedsItsAlphaAtAnyScale)
{
    std::minstd_rand random(7);
    PngFile file = FlatPicture(16, 16);
    for (std::uint8_t& channel : file.channels)
        channel = random() % 2 == 0 ? 0 : 255;
    std::istringstream stream(file.Bytes());
    bitmap.ReadSource(stream, 1.0f);
    for (int level = 0; level < DeviceBacking::levelCount; ++level) {
        backing.SetLevel(level);
        for (int i = 0; i < bitmap.GetSize().x * bitmap.GetSize().y; ++i) {
            const std::uint32_t pixel = bitmap.GetPixels()[i];
            for (const int shift : {0, 8, 16})
                ASSERT_LE(pixel >> shift & 0xFF, 255 - (pixel >> 24)) << level;
        }
    }
}

TEST_F(BitmapTest, OthersAreEmptiedWhenTheScaleChanges)
{
    bitmap.SetSize(10, 4);
    bitmap.FillRect({0, 0, 10, 4}, gui::Color::Black());
    int changes = 0;
    bitmap.OnChanged.addHandler(NotifyEvent::handler([&changes](void*) { ++changes; }));
    backing.SetLevel(4);
    EXPECT_EQ(bitmap.GetSize(), (BasicPoint<int>{20, 8}));
    EXPECT_EQ(bitmap.GetLogicalSize(), (Point{10, 4}));
    EXPECT_EQ(At(0, 0), 0xFF000000u);
    EXPECT_EQ(changes, 1);
}

TEST_F(BitmapTest, ACopyIsItsOwnPictureAtEveryScale)
{
    std::istringstream stream(FlatPicture(8, 6).Bytes());
    bitmap.ReadSource(stream, 2.0f);
    for (const int level : {0, 4}) {  // scaled, and as it was read
        backing.SetLevel(level);
        Bitmap copy(backing);
        copy.CopyFrom(bitmap);
        ASSERT_EQ(copy.GetSize(), bitmap.GetSize());
        EXPECT_EQ(copy.GetLogicalSize(), (Point{4, 3}));
        const std::uint32_t pixel = At(0, 0);
        copy.Clear();
        EXPECT_EQ(At(0, 0), pixel);
        backing.SetLevel(2);
        EXPECT_EQ(copy.GetSize(), (BasicPoint<int>{6, 5}));  // 1.5 times 4 and 3, and 0.7
        copy.SetSize(3, 0);
        Bitmap empty(backing);
        empty.CopyFrom(copy);
        EXPECT_EQ(empty.GetSize(), copy.GetSize());
        EXPECT_EQ(empty.GetPixels(), nullptr);
        backing.SetLevel(level);
    }
}

/// Counts what it has of the memory for pixels.
class CountingBitmap : public Bitmap {
public:
    using Bitmap::Bitmap;
    ~CountingBitmap() override { SetSize(0, 0); }
    static inline int held = 0;

protected:
    void FreePixels(std::uint32_t* freed) noexcept override
    {
        held -= freed != nullptr;
        Bitmap::FreePixels(freed);
    }
    std::uint32_t* AllocatePixels() override
    {
        std::uint32_t* const taken = Bitmap::AllocatePixels();
        held += taken != nullptr;
        return taken;
    }
};

TEST_F(BitmapTest, APictureThatNeedsNoScalingHasItsPixelsOnce)
{
    {
        CountingBitmap counted(backing);
        std::istringstream stream(FlatPicture(8, 6).Bytes());
        counted.ReadSource(stream, 2.0f);
        EXPECT_EQ(CountingBitmap::held, 2);
        backing.SetLevel(4);
        EXPECT_EQ(CountingBitmap::held, 1);
        backing.SetLevel(7);
        EXPECT_EQ(CountingBitmap::held, 2);
        counted.SetSize(5, 5);
        EXPECT_EQ(CountingBitmap::held, 1);
    }
    EXPECT_EQ(CountingBitmap::held, 0);
}

TEST_F(BitmapTest, WhatIsNoPictureSaysSo)
{
    EXPECT_THROW(bitmap.Load("NoSuchPicture.png"), EResource);
    std::istringstream stream("GIF89a");
    try {
        bitmap.ReadSource(stream, 1.0f);
        FAIL();
    } catch (const EBitmap& error) {
        EXPECT_STREQ(error.what(), "Unknown file format");
    }
}

}  // namespace gui
