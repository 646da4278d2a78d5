#include "presets/PresetParameterCollection.h"
#include "parameters/IndexedPluginParameter.h"
#include "presets/CollectionPresetLoader.h"
#include "presets/PresetWriter.h"
#include "support/PresetFixture.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

/// A collection of parameters with these keys.
struct Keys {
    explicit Keys(const std::vector<std::string>& keys)
    {
        collection.signature = "Test";
        for (const std::string& key : keys)
            collection.add(*parameters.emplace_back(std::make_unique<FloatPluginParameter>(&owner, key)));
    }
    RecordingOwner owner;
    PresetParameterCollection collection{owner};
    std::vector<std::unique_ptr<FloatPluginParameter>> parameters;
};

TEST(PresetParameterCollection, FindsWhatAllKeysShare)
{
    struct Row {
        std::vector<std::string> keys;
        const char* prefix;
    };
    for (const auto& [keys, prefix] : {
             Row{{}, ""},
             Row{{"A 1 Time", "A 1 Level"}, "A 1 "},
             Row{{"A 1 Time", "B 1 Time"}, ""},
             Row{{"A 1Input", "A 1 Time"}, "A 1"},
             Row{{"A 1 Time", "Num Active A 1 Steps", "A 1 Step 1"}, "A 1 "},
             Row{{"Num Active A"}, ""},
             Row{{"A 1 Time"}, "A 1 "},
             Row{{"A 1", "A 1 Time"}, "A "},
             Row{{"Solo"}, ""},
         })
        EXPECT_EQ(Keys(keys).collection.commonPrefix(), prefix);
}

TEST(PresetParameterCollection, ATextOfOneSectionFitsTheNext)
{
    const auto keysOf = [](const std::string& section) {
        return std::vector<std::string>{section + "Input", section + " Time", section + " Time Sync",
                                        "Num Active " + section + " Steps", section + " Step 1"};
    };
    Keys third(keysOf("A 3"));
    Keys tenth(keysOf("A 10"));
    third.collection.writeValues(std::vector<float>{0.1f, 0.2f, 0.3f, 0.4f, 0.5f});
    std::stringstream text;
    ASSERT_TRUE(PresetWriter(third.collection, nullptr).writeText(text, 1));
    EXPECT_NE(text.str().find("[Parameters]\nInput=0.1"), std::string::npos);
    EXPECT_NE(text.str().find("\nTime=0.2"), std::string::npos);
    EXPECT_NE(text.str().find("\nNum Active Steps=0.4"), std::string::npos);
    EXPECT_EQ(text.str().find("A 3"), std::string::npos);
    ErrorResult result;
    CollectionPresetLoader loader(tenth.collection);
    EXPECT_TRUE(loader.readPreset(result, text, 1)) << result.message();
    std::vector<float> values;
    tenth.collection.readValues(values);
    EXPECT_EQ(values, (std::vector<float>{0.1f, 0.2f, 0.3f, 0.4f, 0.5f}));
    EXPECT_FALSE(tenth.owner.changedOutsideBracket);
    EXPECT_EQ(tenth.owner.brackets, 1);
}

TEST(PresetParameterCollection, TellsUnknownKeys)
{
    Keys keys({"A 1 Time", "A 1 Level", "Num Active A 1 Steps"});
    for (const char* key : {"Tone", "A 1 Time", "Num Active A 1 Steps", "Num Active", "Num Active Time"}) {
        std::istringstream text("[Preset]\nSignature=Test\nVersion=1\n[Parameters]\n" + std::string(key) +
                                "=1\n");
        ErrorResult result;
        CollectionPresetLoader loader(keys.collection);
        EXPECT_FALSE(loader.readPreset(result, text, 1));
        EXPECT_EQ(result.message(), std::string("Unknown parameter: ").append(key));
    }
}

TEST(CollectionPresetLoader, AcceptsItsOwnSignatureAlone)
{
    Keys keys({"A 1 Time", "A 1 Level"});
    struct Row {
        std::string bytes;
        const char* message;
    };
    for (const auto& [bytes, message] : {
             Row{presetBytes("Tess", 1, {}),
                 "Unknown preset signature (likely intended for another Morvelane plug-in): Tess"},
             Row{presetBytes("Test", 2, {}), "Preset version not supported: 2"},
             Row{presetBytes("Test", 1, {0.5f}), ""},
         }) {
        std::istringstream stream(bytes);
        ErrorResult result;
        CollectionPresetLoader loader(keys.collection);
        loader.readPreset(result, stream, 1);
        EXPECT_EQ(result.message(), message);
    }
    EXPECT_EQ(keys.parameters[0]->currentValue(), 0.5f);
}

}  // namespace
