#include "gui/DeviceBacking.h"

#include <gtest/gtest.h>

namespace gui {

TEST(DeviceBacking, AScaleGoesToTheLevelWhoseThresholdItPasses)
{
    struct Row {
        float scale;
        int level;
    };
    for (const auto& [scale, level] : {Row{0.5f, 0}, Row{1.2f, 0}, Row{1.21f, 1}, Row{1.3f, 1}, Row{1.41f, 2},
                                       Row{1.61f, 3}, Row{1.81f, 4}, Row{2.2f, 4}, Row{2.21f, 5},
                                       Row{2.41f, 6}, Row{2.6f, 6}, Row{2.7f, 7}, Row{9.0f, 7}})
        EXPECT_EQ(DeviceBacking::LevelOf(scale), level) << scale;
}

TEST(DeviceBacking, SnapsToTheDevicePixel)
{
    DeviceBacking backing;
    struct Row {
        int level;
        float value, snapped;
    };
    for (const auto& [level, value, snapped] : {Row{0, 1.29f, 1.0f}, Row{0, 1.31f, 2.0f}, Row{1, 1.3f, 1.6f},
                                                Row{4, 1.3f, 1.5f}, Row{4, -0.6f, -0.5f}}) {
        backing.SetLevel(level);
        EXPECT_FLOAT_EQ(backing.Snap(value), snapped) << level << ' ' << value;
    }
}

TEST(DeviceBacking, TheTableOfTheModeDecidesThenTheDefaultThenTheMonitor)
{
    DeviceBacking backing;
    backing.ReadAdjustments("125:150,F200:100");
    backing.SetDefaultFullScreenLevel(7);
    struct Row {
        int native;
        bool fullScreen;
        float scale;
    };
    for (const auto& [native, fullScreen, scale] :
         {Row{1, false, 1.5f}, Row{4, false, 2.0f}, Row{4, true, 1.0f}, Row{1, true, 3.0f}}) {
        backing.SetFullScreen(fullScreen);
        backing.SetLevel(native);
        EXPECT_EQ(backing.Scale(), scale) << native << fullScreen;
    }
    backing.SetDefaultFullScreenLevel(-1);
    EXPECT_EQ(backing.Scale(), 1.25f);
    EXPECT_EQ(backing.AdjustedLevel(1), 2);
    EXPECT_EQ(backing.AdjustedLevel(4), 4);
}

TEST(DeviceBacking, AdjustmentsAreReadUpToTheFirstThatIsNone)
{
    struct Row {
        const char* text;
        const char* kept;
    };
    for (const auto& [text, kept] :
         {Row{"F200:100,125:150", "125:150,F200:100"}, Row{"100:300,x,125:150", "100:300"},
          Row{"130:149", "125:150"}, Row{"125:", ""}, Row{"", ""}, Row{"100:125,125", "100:125"},
          Row{"99999999999:100", ""}, Row{"175:225,250:275;100:200", "175:225,250:300"}}) {
        DeviceBacking backing;
        backing.ReadAdjustments("150:300");  // forgotten
        backing.ReadAdjustments(text);
        EXPECT_EQ(backing.WriteAdjustments(), kept) << text;
    }
}

TEST(DeviceBacking, ListenersHearOfAnotherScaleFromTheLastToTheFirst)
{
    struct Listener : DeviceBacking::BackingScaleListener {
        Listener(std::string& heardBy, char ownName) : heard(heardBy), name(ownName) {}
        void BackingScaleChanged() override { heard += name; }
        std::string& heard;
        char name;
    };
    DeviceBacking backing;
    std::string heard;
    Listener first(heard, 'a');
    Listener second(heard, 'b');
    backing.AddListener(first);
    backing.AddListener(second);
    backing.SetLevel(0);
    backing.SetChosenLevel(false, 3, 0);
    backing.SetLevel(3);
    EXPECT_EQ(heard, "");
    backing.SetLevel(2);
    EXPECT_EQ(heard, "ba");
    backing.RemoveListener(second);
    backing.SetLevel(4);
    EXPECT_EQ(heard, "baa");
}

}  // namespace gui
