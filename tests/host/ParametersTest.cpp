#include "PluginPlayer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

TEST(HostParameters, ListsTheWholeTreeWithDefaultsThatANewInstanceHolds)
{
    PluginPlayer player;
    const ClapParameters& parameters = player.instance.parameters();
    ASSERT_EQ(parameters.list().size(), 705u);
    for (std::size_t i = 0; i < 705; ++i) {
        const ClapParameter& parameter = parameters.list()[i];
        EXPECT_EQ(parameter.id, i);
        EXPECT_EQ(parameters.value(parameter.id), parameter.defaultValue) << parameter.name;
        EXPECT_TRUE(parameter.flags & CLAP_PARAM_IS_AUTOMATABLE) << parameter.name;
    }
    struct Row {
        clap_id id;
        const char* name;
        const char* module;
        bool stepped;
        const char* text;
    };
    for (const auto& [id, name, module, stepped, text] :
         {Row{0, "Delay 1 Time", "Delay 1", false, "350.0 ms"},
          Row{16, "Delay Buffer Read Style", "", true, "Tape"},
          Row{121, "XLFO 1 Step 16 Random", "XLFO 1", true, "Fixed"},
          Row{537, "EF 1Input", "EF 1", true, "Normal Input"},
          Row{704, "Dry Enabled", "", true, "Enabled"}}) {
        const ClapParameter& parameter = parameters.list()[id];
        EXPECT_EQ(parameter.name, name);
        EXPECT_EQ(parameter.module, module);
        EXPECT_EQ((parameter.flags & CLAP_PARAM_IS_STEPPED) != 0, stepped);
        EXPECT_EQ(parameters.toText(id, parameter.defaultValue), text);
    }
}

TEST(HostParameters, RefusesIdsAndTextsThatMeanNothing)
{
    PluginPlayer player;
    const clap_plugin_t& plugin = player.instance.plugin();
    const auto& table = *player.instance.extension<clap_plugin_params_t>(CLAP_EXT_PARAMS);
    clap_param_info_t info{};
    double value = 0.0;
    char text[8] = "unset";
    EXPECT_FALSE(table.get_info(&plugin, 705, &info));
    EXPECT_FALSE(table.get_value(&plugin, CLAP_INVALID_ID, &value));
    EXPECT_FALSE(table.value_to_text(&plugin, 705, 0.0, text, sizeof text));
    EXPECT_FALSE(table.text_to_value(&plugin, 0, "soon", &value));
    EXPECT_FALSE(table.text_to_value(&plugin, 16, "Vinyl", &value));
    // Cut to the room there is, always ended; a value that is none still reads.
    ASSERT_TRUE(table.value_to_text(&plugin, 537, 1.0, text, sizeof text));
    EXPECT_STREQ(text, "Side Ch");
    EXPECT_TRUE(table.value_to_text(&plugin, 0, std::numeric_limits<double>::quiet_NaN(), text, sizeof text));
}

TEST(HostParameters, TakesEveryEventOfAFlushWhateverItsTime)
{
    for (bool active : {false, true}) {
        PluginPlayer player;
        if (active)
            player.renderer();
        EventList events;
        events.add(parameterEvent(0, player.id("Delay 1 Pan"), 0.25));
        events.add(parameterEvent(5000, player.id("Delay 2 Pan"), -0.5));
        player.instance.flush(events);
        EXPECT_EQ(player.instance.parameters().value(player.id("Delay 1 Pan")), 0.25);
        EXPECT_EQ(player.instance.parameters().value(player.id("Delay 2 Pan")), -0.5);
    }
}

TEST(HostParameters, TakesManyFlushesAtRestAndPlaysTheLast)
{
    PluginPlayer player;
    for (int i = 0; i < 100000; ++i) {
        EventList events(1);
        events.add(parameterEvent(0, player.id("Dry Level"), i % 2 ? 0.3 : 0.7));
        player.instance.flush(events);
    }
    player.set("Dry Level", "-6 dB");
    player.set("Wet Level", "-INF dB");
    EXPECT_NEAR(player.play(std::vector<float>(64, 1.0f))[63], std::pow(10.0, -6.0 / 20.0), 1e-4);
}
