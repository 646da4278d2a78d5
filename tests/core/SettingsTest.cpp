#include "core/PluginSettings.h"
#include "core/SettingsReader.h"
#include "core/SettingsWriter.h"
#include "core/SharedSettings.h"
#include "foundation/UserFolders.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <clocale>
#include <map>

namespace {

const std::string key = settingsKey("Sordelin", 2);

/// A store that has nothing but texts, and notes the keys in their order.
struct TextStore : SettingSerializer {
    explicit TextStore(bool forWriting = true) : writes(forWriting) {}
    bool isWriter() const override { return writes; }
    void bytes(const std::string&, std::vector<std::uint8_t>&) override {}
    std::string stringValue(const std::string& name, const std::string& value,
                            const std::string& fallback) override
    {
        keys.push_back(name);
        if (writes)
            texts[name] = value;
        const auto found = texts.find(name);
        return found == texts.end() ? fallback : found->second;
    }
    bool writes;
    std::vector<std::string> keys;
    std::map<std::string, std::string> texts;
};

struct SettingsFixture : testing::Test {
    std::string stored() const { return home.folder.read("config/Morvelane/Sordelin/2.0.toml"); }
    void store(const std::string& text) const
    {
        std::filesystem::create_directories(home.folder / "config/Morvelane/Sordelin");
        home.folder.write("config/Morvelane/Sordelin/2.0.toml", text);
    }
    TemporaryHome home;
};
using Keys = std::vector<std::string>;

InterfaceLimits resizable()
{
    InterfaceLimits limits;
    limits.canResize = true;
    limits.minimumWidth = 300;
    limits.minimumHeight = 200;
    return limits;
}

}  // namespace

TEST(SettingSerializer, KeepsNumbersAsTextsWhateverTheLocale)
{
    const char* german = std::setlocale(LC_ALL, "de_DE.UTF-8");
    struct Row {
        double value;
        const char* text;
    };
    for (const auto& [value, text] :
         {Row{0.1, "0.1"}, Row{-1.5, "-1.5"}, Row{1.0 / 3.0, "0.333333333333333"}, Row{1e100, "1e+100"},
          Row{123456789012345.0, "123456789012345"}, Row{0.0, "0"}, Row{1e-7, "1e-07"}}) {
        TextStore store;
        EXPECT_EQ(store.floatValue("F", value, 7.0), value);
        EXPECT_EQ(store.texts["F"], text);
        store.writes = false;
        EXPECT_NEAR(store.floatValue("F", 0.0, 7.0), value, std::abs(value) * 1e-14);
    }
    if (german)
        std::setlocale(LC_ALL, "C");
    for (const char* text : {"", "abc", "1,5", "1.5x", " 1", "nan", "inf", "1e999"}) {
        TextStore store(false);
        store.texts["F"] = text;
        EXPECT_EQ(store.floatValue("F", 1.0, 7.0), 7.0) << text;
        EXPECT_EQ(store.intValue("F", 1, 7), 7) << text;
    }
    TextStore store;
    EXPECT_EQ(store.intValue("I", -12, 3), -12);
    EXPECT_TRUE(store.boolValue("B", true, false));
    EXPECT_EQ(store.texts["I"], "-12");
    EXPECT_EQ(store.texts["B"], "1");
    store.writes = false;
    store.texts["B"] = "-5";
    EXPECT_TRUE(store.boolValue("B", false, false));
    EXPECT_TRUE(store.boolValue("missing", false, true));
}

TEST_F(SettingsFixture, ComeBackAsTheyWereGiven)
{
    std::vector<std::uint8_t> bytes{0, 255};
    {
        SettingsWriter writer(key);
        EXPECT_EQ(writer.intValue("Int", -7, 1), -7);
        EXPECT_EQ(writer.stringValue("Text", "\xC3\xBC", "x"), "\xC3\xBC");
        EXPECT_EQ(writer.floatValue("Float", 1.0 / 3.0, 0.0), 1.0 / 3.0);
        EXPECT_TRUE(writer.boolValue("Bool", true, false));
        writer.bytes("Bytes", bytes);
        EXPECT_EQ(stored(), "");  // all of it in one go
    }
    EXPECT_EQ(stored(),
              "Bool = 1\nBytes = [0, 255]\nFloat = \"0.333333333333333\"\nInt = -7\nText = \"\xC3\xBC\"\n");
    SettingsReader reader(key);
    EXPECT_EQ(reader.intValue("Int", 5, 1), -7);
    EXPECT_EQ(reader.stringValue("Text", "y", "x"), "\xC3\xBC");
    EXPECT_NEAR(reader.floatValue("Float", 5.0, 0.0), 1.0 / 3.0, 1e-14);
    EXPECT_TRUE(reader.boolValue("Bool", false, false));
    std::vector<std::uint8_t> read{9};
    reader.bytes("Bytes", read);
    EXPECT_EQ(read, bytes);
    // Another type counts as missing.
    EXPECT_EQ(reader.intValue("Text", 5, 1), 1);
    EXPECT_EQ(reader.stringValue("Int", "y", "x"), "x");
    EXPECT_EQ(reader.floatValue("Int", 5.0, 2.0), 2.0);
    EXPECT_FALSE(reader.boolValue("Bytes", true, false));
    reader.bytes("Text", read);
    EXPECT_TRUE(read.empty());
}

TEST(PluginSettings, TakeTheKeysThatTheInterfaceHas)
{
    struct Row {
        InterfaceLimits limits;
        Keys keys;
    };
    InterfaceLimits plain, layouts, one, panels, all = resizable(), ownScales;
    layouts.layoutCount = 2;
    one.layoutCount = 1;
    panels.panelCount = 3;
    all.panelCount = 1;
    all.hostScales = false;
    ownScales.hostScales = false;
    for (const auto& [limits, keys] :
         {Row{plain, {}}, Row{one, {}}, Row{layouts, {"InterfaceLayout"}}, Row{panels, {"InterfacePanels"}},
          Row{ownScales, {"ScalingAdjustments"}},
          Row{resizable(), {"InterfaceLayout", "InterfaceWidth", "InterfaceHeight"}},
          Row{all,
              {"InterfaceLayout", "InterfacePanels", "InterfaceWidth", "InterfaceHeight",
               "ScalingAdjustments"}}}) {
        for (const bool writing : {false, true}) {
            PluginSettings settings(key, limits);
            TextStore store(writing);
            settings.serialize(store);
            EXPECT_EQ(store.keys, keys);
        }
    }
}

TEST(PluginSettings, StayWithinTheirLimits)
{
    struct Row {
        InterfaceLimits limits;
        const char* text;
        int layout, panels, width, height;
    };
    InterfaceLimits three = resizable();
    three.layoutCount = 3;
    three.panelCount = 4;
    InterfaceLimits fixed;
    fixed.layoutCount = 2;
    for (const auto& [limits, text, layout, panels, width, height] :
         {Row{three, "20000", 2, 16, 16000, 12000}, Row{three, "-20000", -1, 0, 300, 200},
          Row{three, "1", 1, 1, 300, 200}, Row{three, "none", -1, 0, 300, 200}, Row{fixed, "9", 1, 0, 0, 0},
          Row{fixed, "-9", 0, 0, 0, 0}}) {
        PluginSettings settings(key, limits);
        TextStore store(false);
        for (const char* name : {"InterfaceLayout", "InterfacePanels", "InterfaceWidth", "InterfaceHeight"})
            store.texts[name] = text;
        settings.serialize(store);
        EXPECT_EQ(settings.interfaceLayout.value(), layout) << text;
        EXPECT_EQ(settings.interfacePanels.value(), panels) << text;
        EXPECT_EQ(settings.interfaceWidth.value(), width) << text;
        EXPECT_EQ(settings.interfaceHeight.value(), height) << text;
    }
}

TEST(SharedSettings, TakeTheirKeysInOrderAndStartAsTheyShould)
{
    SharedSettings settings(key);
    TextStore store;
    settings.serialize(store);
    EXPECT_EQ(store.keys, (Keys{"EnableMIDIProgramChanges", "GraphicsAcceleration", "RetinaEnabled",
                                "showInteractiveHelp", "showWelcomeHint", "ShowComponentDisplays",
                                "PresetBrowserTypeToSearch"}));
    using Texts = std::map<std::string, std::string>;
    EXPECT_EQ(store.texts, (Texts{{"EnableMIDIProgramChanges", "0"},
                                  {"GraphicsAcceleration", "1"},
                                  {"RetinaEnabled", "1"},
                                  {"showInteractiveHelp", "1"},
                                  {"showWelcomeHint", "0"},
                                  {"ShowComponentDisplays", "1"},
                                  {"PresetBrowserTypeToSearch", "1"}}));
    store.writes = false;
    for (auto& [name, text] : store.texts)
        text = text == "0" ? "1" : "0";
    store.texts["RetinaEnabled"] = "301";
    store.texts["GraphicsAcceleration"] = "65538";  // every second frame, on any graphics processor
    settings.serialize(store);
    EXPECT_TRUE(settings.enableMIDIProgramChanges.value() && settings.takesProgramChanges());
    EXPECT_EQ(static_cast<int>(settings.graphicsAcceleration.value()), 65538);
    EXPECT_EQ(settings.retinaEnabled.value(), 300);
    EXPECT_FALSE(settings.showInteractiveHelp.value() || settings.showComponentDisplays.value());
    EXPECT_FALSE(settings.presetBrowserTypeToSearch.value());
    EXPECT_TRUE(settings.showWelcomeHint.value());
}

TEST_F(SettingsFixture, StoreOnceForEachBracketAndOnlyWhenLoaded)
{
    SharedSettings settings(key);
    int reports = 0;
    settings.settingsChanged.addHandler(NotifyEvent::handler([&](void*) { ++reports; }));
    settings.showWelcomeHint.assign(true);
    EXPECT_EQ(reports, 0);
    settings.loaded.assign(true);
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(stored(), "");  // it came from there
    {
        const ScopedUpdate bracket(settings);
        settings.retinaEnabled.assign(150);
        settings.showInteractiveHelp.assign(false);
        EXPECT_EQ(stored(), "");
    }
    EXPECT_EQ(reports, 2);
    EXPECT_NE(stored().find("RetinaEnabled = 150\n"), std::string::npos);
    EXPECT_NE(stored().find("showInteractiveHelp = 0\n"), std::string::npos);
    EXPECT_NE(stored().find("showWelcomeHint = 1\n"), std::string::npos);  // the whole group
    store("# mine\nOther = 1\n");
    settings.retinaEnabled.assign(150);  // no change
    EXPECT_EQ(stored(), "# mine\nOther = 1\n");
    settings.retinaEnabled.assign(100);
    EXPECT_EQ(stored().find("# mine\nOther = 1\n"), 0u);
    EXPECT_NE(stored().find("RetinaEnabled = 100\n"), std::string::npos);
}

TEST_F(SettingsFixture, TellOfWhatAReaderBringsAndStoreNothingMeanwhile)
{
    SharedSettings settings(key);
    settings.loaded.assign(true);
    int reports = 0;
    settings.settingsChanged.addHandler(NotifyEvent::handler([&](void*) { ++reports; }));
    const std::string text = "RetinaEnabled = 200\nshowWelcomeHint = 1\n";
    store(text);
    SettingsReader reader(key);
    settings.exchange(reader);
    EXPECT_EQ(settings.retinaEnabled.value(), 200);
    EXPECT_TRUE(settings.showWelcomeHint.value());
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(stored(), text);
    SettingsReader again(key);
    settings.exchange(again);
    EXPECT_EQ(reports, 1);
}

TEST_F(SettingsFixture, AreDroppedInSilenceWhereTheyCannotBeKept)
{
    home.folder.write("config", "a file where the folder would be");
    SharedSettings settings(key);
    settings.loaded.assign(true);
    settings.retinaEnabled.assign(150);
    EXPECT_EQ(settings.retinaEnabled.value(), 150);
    EXPECT_EQ(SettingsReader(key).intValue("RetinaEnabled", 0, -3), -3);
}
