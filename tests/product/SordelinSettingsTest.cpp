#include "product/SordelinPlugin.h"

#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

namespace {

using Layout = SordelinPlugin::InterfaceLayout;

void store(const TemporaryHome& home, const char* text)
{
    std::filesystem::create_directories(home.folder / "config/Morvelane/Sordelin");
    home.folder.write("config/Morvelane/Sordelin/2.0.toml", text);
}

}  // namespace

TEST(SordelinSettings, GiveTheSizeOfTheInterface)
{
    struct Row {
        const char* text;
        Layout layout;
        int expanded, width, height;
    };
    for (const auto& [text, layout, expanded, width, height] : {
             Row{"", Layout::Normal, -1, 640, 321},
             Row{"InterfaceLayout = 1\n", Layout::Wide, -1, 926, 321},
             Row{"InterfaceLayout = 7\nExpandedSection = 2\n", Layout::Wide, 2, 926, 321},
             Row{"InterfaceLayout = -7\nShowModulation = 1\n", Layout::Normal, -1, 640, 514},
             Row{"InterfaceLayout = 'wide'\nInterfaceWidth = 2000\n", Layout::Normal, -1, 640, 321},
         }) {
        const TemporaryHome home;
        store(home, text);
        SordelinPlugin plugin;
        EXPECT_EQ(plugin.sordelinSettings().interfaceLayout.value(), layout) << text;
        EXPECT_EQ(plugin.sordelinSettings().expandedSection.value(), expanded) << text;
        EXPECT_EQ(plugin.defaultInterfaceWidth(), width) << text;
        EXPECT_EQ(plugin.defaultInterfaceHeight(), height) << text;
        EXPECT_EQ(plugin.settings().interfaceWidth.value(), 926);  // the smallest; it can't be resized
        EXPECT_EQ(plugin.settings().interfaceHeight.value(), 514);
    }
}

TEST(SordelinSettings, AreStoredUnderTheirOwnNames)
{
    const TemporaryHome home;
    SordelinPlugin plugin;
    {
        const ScopedUpdate bracket(plugin.settings());
        plugin.sordelinSettings().interfaceLayout.assign(Layout::Wide);
        plugin.sordelinSettings().expandedSection.assign(1);
        plugin.sordelinSettings().showModulation.assign(true);
    }
    EXPECT_EQ(home.folder.read("config/Morvelane/Sordelin/2.0.toml"),
              "ExpandedSection = 1\nInterfaceLayout = 1\nShowModulation = 1\n");
    plugin.sharedSettings().retinaEnabled.assign(125);
    EXPECT_EQ(
        home.folder.read("config/Morvelane/Sordelin/2.0.toml"),
        "ExpandedSection = 1\nInterfaceLayout = 1\nShowModulation = 1\n"
        "EnableMIDIProgramChanges = 0\nGraphicsAcceleration = 1\nPresetBrowserTypeToSearch = 1\n"
        "RetinaEnabled = 125\nShowComponentDisplays = 1\nshowInteractiveHelp = 1\nshowWelcomeHint = 0\n");
}
