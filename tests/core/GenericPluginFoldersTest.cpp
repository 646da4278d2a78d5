#include "core/GenericPlugin.h"
#include "presets/PresetCache.h"
#include "support/PresetFiles.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

namespace {

/// A product with the folders of "Sordelin 2".
struct TestPlugin : GenericPlugin {
    explicit TestPlugin(std::uint32_t productFlags)
    {
        flags = productFlags;
        versionedName = "Sordelin 2";
        joinProcess();
    }
};

}  // namespace

TEST(GenericPluginFolders, HaveACacheOnlyWhereTheProductWantsOne)
{
    const TemporaryHome home;
    putPreset(home.folder, "Documents/Morvelane/Presets/Sordelin 2/Own.mvp",
              "[Preset]\nSignature=Test\nVersion=1\nAuthor=Ada\n");
    EXPECT_EQ(TestPlugin(0).presetCache(), nullptr);
    EXPECT_FALSE(std::filesystem::exists(home.productData()));
    {
        TestPlugin plugin(GenericPluginInfo::HasPresetCache);
        ASSERT_NE(plugin.presetCache(), nullptr);
        plugin.presetCache()->waitForWorker();
        EXPECT_EQ(plugin.presetCache()->find("ada").size(), 1u);
    }
    EXPECT_TRUE(std::filesystem::exists(home.productData() / "PresetCache.dat"));
}
