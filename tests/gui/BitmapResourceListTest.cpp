#include "gui/BitmapResourceList.h"

#include "gui/Bitmap.h"
#include "resources/ResourceTable.h"
#include "support/PngFile.h"

#include <gtest/gtest.h>

#include <array>

namespace {

/// A picture of one tone.
std::string squarePicture(std::uint32_t size, std::uint8_t tone)
{
    PngFile file;
    file.width = file.height = size;
    for (std::uint32_t i = 0; i < size * size; ++i)
        file.channels.insert(file.channels.end(), {tone, tone, tone, 255});
    return file.Bytes();
}

}  // namespace

/// What these tests carry in place of the program's own.
std::span<const CarriedResource> carriedResources() noexcept
{
    static const std::string plain = squarePicture(10, 0);
    static const std::string doubled = squarePicture(20, 255);
    static const std::string broken = "GIF89a";
    const auto bytesOf = [](const std::string& text) { return std::as_bytes(std::span(text)); };
    static const std::array table{
        CarriedResource{"BOTH", bytesOf(plain)}, CarriedResource{"BOTH_2X", bytesOf(doubled)},
        CarriedResource{"PLAIN", bytesOf(plain)}, CarriedResource{"DOUBLED_2X", bytesOf(doubled)},
        CarriedResource{"BROKEN_2X", bytesOf(broken)}};
    return table;
}

namespace gui {

TEST(BitmapResourceList, ThePlainPictureIsForItsOwnSizeAlone)
{
    struct Row {
        const char* name;
        int level, size;
        bool isDoubled;
    };
    for (const auto& [name, level, size, isDoubled] :
         {Row{"Both.png", 0, 10, false}, Row{"Both.png", 1, 13, true}, Row{"Both.png", 4, 20, true},
          Row{"Plain.png", 0, 10, false}, Row{"Plain.png", 4, 20, false}, Row{"Doubled.png", 0, 10, true},
          Row{"Doubled.png", 4, 20, true}}) {
        DeviceBacking backing;
        backing.SetLevel(level);
        Bitmap bitmap(backing);
        bitmap.Load(name);
        EXPECT_EQ(bitmap.GetSize(), (BasicPoint<int>{size, size})) << name << level;
        EXPECT_EQ(bitmap.GetLogicalSize(), (Point{10, 10})) << name << level;
        EXPECT_EQ(bitmap.GetPixel({5, 5}).r, isDoubled ? 255 : 0) << name << level;
    }
}

TEST(BitmapResourceList, EachPictureIsReadOnceWhateverTheCase)
{
    DeviceBacking backing;
    const BitmapResourceReference list(new BitmapResourceList(backing));
    Bitmap& both = list->Get("Both.png");
    EXPECT_NE(&list->Get("Plain.png"), &both);
    EXPECT_EQ(&list->Get("BOTH.png"), &both);
    EXPECT_THROW(list->Get("Broken.png"), EBitmap);
    EXPECT_THROW(list->Get("Broken.png"), EBitmap);  // isn't kept half read
}

TEST(BitmapResourceList, TheLastReferenceTakesTheOwnedBackingAlong)
{
    struct WatchedBacking : DeviceBacking {
        explicit WatchedBacking(bool& goneFlag) : gone(goneFlag) {}
        ~WatchedBacking() override { gone = true; }
        bool& gone;
    };
    bool gone = false;
    BitmapResourceReference first(new BitmapResourceList(std::make_unique<WatchedBacking>(gone)));
    first->AddReference();
    BitmapResourceReference second(first.get());
    first.reset();
    second->Backing().SetLevel(4);
    EXPECT_EQ(second->Get("Both.png").GetSize(), (BasicPoint<int>{20, 20}));
    EXPECT_FALSE(gone);
    second.reset();
    EXPECT_TRUE(gone);
}

}  // namespace gui
