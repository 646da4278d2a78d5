#include "presets/CustomPresetLoader.h"
#include "presets/PresetWriter.h"
#include "support/PresetFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace {

using Values = std::vector<float>;

const Values fresh = {9.0f, 8.0f, 7.0f};  // what parameters have before a load

struct Loaded {
    bool succeeded;
    std::string message;
    Values values;
};

struct PresetLoaderTest : testing::Test, PresetFixture {
    Loaded load(const std::string& bytes, int requiredVersion = -1, const std::string& section = {})
    {
        set(fresh);
        owner.changedOutsideBracket = false;
        const int brackets = owner.brackets;
        std::istringstream stream(bytes);
        CustomPresetLoader loader(collection, plugin);
        loader.currentVersion = 5;
        ErrorResult result;
        const bool succeeded = loader.readPreset(result, stream, requiredVersion, section);
        EXPECT_EQ(succeeded, result.succeeded());
        EXPECT_EQ(result.code(), succeeded ? 0 : -1);
        EXPECT_FALSE(owner.changedOutsideBracket);
        EXPECT_EQ(owner.openBrackets, 0);
        EXPECT_LE(owner.brackets, brackets + 1);
        return {succeeded, result.message(), values()};
    }
};

const std::string textHeader = "[Preset]\nSignature=Test\nVersion=5\n";

TEST_F(PresetLoaderTest, LoadsFilesOfAnyLength)
{
    struct Row {
        Values stored;
        Values loaded;
    };
    for (const auto& [stored, loaded] :
         {Row{{-1.5f, 0.25f, 4.0f}, {-1.5f, 0.25f, 4.0f}}, Row{{5.0f}, {5.0f, 2.0f, 3.0f}},
          Row{{}, {1.0f, 2.0f, 3.0f}}, Row{{4.0f, 5.0f, 6.0f, 99.0f, 98.0f}, {4.0f, 5.0f, 6.0f}},
          Row{{NAN, 50.0f, -50.0f}, {1.0f, 10.0f, -10.0f}},
          Row{{INFINITY, -INFINITY, 0.0f}, {10.0f, -10.0f, 0.0f}}}) {
        const Loaded result = load(presetBytes("Test", 5, stored));
        EXPECT_TRUE(result.succeeded) << result.message;
        EXPECT_EQ(result.values, loaded);
    }
}

TEST_F(PresetLoaderTest, SaysWhatIsWrong)
{
    const std::string five = presetBytes("Test", 5, {4.0f, 5.0f, 6.0f});
    struct Row {
        std::string bytes;
        const char* message;
        Values values;
    };
    const Values defaults = {1.0f, 2.0f, 3.0f};
    const Row rows[] = {
        {"", "Incorrect file permissions or corrupt preset file.", fresh},
        {"Test\5\0\0", "Incorrect file permissions or corrupt preset file.", fresh},
        {"[Pr", "Incorrect file permissions or corrupt preset file.", fresh},
        {presetBytes("Tess", 5, {}),
         "Unknown preset signature (likely intended for another Morvelane plug-in): Tess", fresh},
        {presetBytes(std::string("T\0\xFFt", 4), -1, {}),
         "Unknown preset signature (likely intended for another Morvelane plug-in): T??t", fresh},
        {presetBytes("Test", 6, {}), "Preset version not supported: 6", fresh},
        {presetBytes("Test", 4, {}), "Preset version not supported: 4", fresh},
        {presetBytes("Test", 0, {}), "Preset version not supported: 0", fresh},
        {presetBytes("Test", -3, {}), "Preset version not supported: -3", fresh},
        {five.substr(0, 8), "Invalid file format.", defaults},
        {five.substr(0, 11), "Invalid file format.", defaults},
        {five.substr(0, 12), "Invalid file format.", defaults},
        {five.substr(0, 15), "Invalid file format.", defaults},
        {five.substr(0, 16), "Invalid file format.", {4.0f, 2.0f, 3.0f}},
        {five.substr(0, 23), "Invalid file format.", {4.0f, 5.0f, 3.0f}},
        {"Zest\x1F\x1F\x1F\x1F and more", "Invalid preset header.", fresh},
        {"[Other]\nSignature=Test\nVersion=5\n", "Invalid preset header.", fresh},
        {"Signature=Test\n[Preset]\n", "Invalid preset header.", fresh},
        {"[Preset]\nVersion=5\n", "Incorrect file permissions or corrupt preset file.", fresh},
        {"[Preset]\nSignature=Tess\nVersion=5\n",
         "Unknown preset signature (likely intended for another Morvelane plug-in): Tess", fresh},
        {"[Preset]\nSignature=Test\nVersion=six\n", "Preset version not supported: 0", fresh},
        {"[Preset]\nSignature=Test\nVersion=6\n", "Preset version not supported: 6", fresh},
        {textHeader + "nonsense\n[Parameters]\n", "Invalid file format.", fresh},
        {textHeader + "[Parameters]\nAlpha=4\nnonsense\nBeta=5\n",
         "Invalid file format.",
         {4.0f, 2.0f, 3.0f}},
        {textHeader + "[Parameters]\nDelta=4\nBeta=5\nEta=1\n",
         "Unknown parameter: Delta",
         {1.0f, 5.0f, 3.0f}},
        {textHeader + "[Parameters]\nDelta=4\nbroken\n", "Unknown parameter: Delta", defaults},
    };
    for (const auto& [bytes, message, values] : rows) {
        const Loaded result = load(bytes);
        EXPECT_FALSE(result.succeeded) << bytes;
        EXPECT_EQ(result.message, message);
        EXPECT_EQ(result.values, values) << message << " in " << bytes;
    }
    EXPECT_EQ(plugin.names, 0);
}

TEST_F(PresetLoaderTest, HoldsToARequiredVersion)
{
    EXPECT_EQ(load(presetBytes("Test", 2, {4.0f, 5.0f, 6.0f}), 2).values, (Values{4.0f, 5.0f, 6.0f}));
    EXPECT_EQ(load(presetBytes("Test", 5, {}), 2).message, "Preset version not supported: 5");
    EXPECT_EQ(load("[Preset]\nSignature=Test\nVersion=2\n[Parameters]\nBeta=5\n", 2).values,
              (Values{1.0f, 5.0f, 3.0f}));
}

TEST_F(PresetLoaderTest, BelievesNoCount)
{
    const std::uint32_t hostile[] = {0xFFFFFFFF, 0x80000000, 0x7FFFFFFF, 0x40000000};
    for (const std::uint32_t count : hostile) {
        // The number of values: what is there is read, and a negative one means none.
        const std::string values = word(4.0f) + word(5.0f) + word(6.0f);
        const Loaded result = load("Test" + word(5u) + word(count) + values);
        EXPECT_EQ(result.values, count >> 31 ? (Values{1.0f, 2.0f, 3.0f}) : (Values{4.0f, 5.0f, 6.0f}));

        // The number of custom values, and the lengths of a key and of a value.
        const std::string block = presetBytes("Test", 5, {4.0f, 5.0f, 6.0f}) + "CuSV" + word(1u);
        for (const std::string& damaged :
             {block + word(count), block + word(1u) + word(count) + "key" + counted("value"),
              block + word(1u) + counted("key") + word((count & 0x7FFFFFFF) | 0x100) + "value"}) {
            const Loaded custom = load(damaged);
            EXPECT_EQ(custom.message, "Invalid file format.") << count;
            EXPECT_EQ(custom.values, (Values{4.0f, 5.0f, 6.0f}));
        }
    }
}

TEST_F(PresetLoaderTest, AnyTruncationFails)
{
    const std::string whole = presetBytes("Test", 5, {4.0f, 5.0f, 6.0f}) + "CuSV" + word(1u) + word(1u) +
                              counted("key") + counted("value");
    ASSERT_TRUE(load(whole).succeeded);
    EXPECT_EQ(plugin.values, (CustomValues{{"key", "value"}}));
    const std::size_t parametersEnd = 12 + 4 * 3;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Loaded result = load(whole.substr(0, length));
        // Custom values needn't be there; less than the magic isn't any.
        if (length >= parametersEnd && length < parametersEnd + 4) {
            EXPECT_TRUE(result.succeeded) << length;
        } else {
            EXPECT_EQ(result.message, length < 8 ? "Incorrect file permissions or corrupt preset file."
                                                 : "Invalid file format.")
                << length;
        }
    }
}

TEST_F(PresetLoaderTest, TakesCustomValuesFromTheBlock)
{
    plugin.values = {{"old", "1"}};
    EXPECT_TRUE(load(presetBytes("Test", 5, {})).succeeded);
    EXPECT_TRUE(plugin.values.empty());
    EXPECT_EQ(plugin.customChanges, 1);
    EXPECT_TRUE(load(presetBytes("Test", 5, {}) + "CuSV" + word(7u) + word(2u) + counted("AUTHOR") +
                     counted("me") + counted("") + counted("empty"))
                    .succeeded);
    EXPECT_EQ(plugin.values, (CustomValues{{"AUTHOR", "me"}, {"", "empty"}}));
}

TEST_F(PresetLoaderTest, ReadsText)
{
    const Loaded result = load("; a comment\n[Preset]\nSignature=Test\nVersion=5\nName=\"Big \\\"One\\\"\"\n"
                               "Modified=1\nAuthor=me\nTags=a,b\nElse=7\n\n"
                               "[Strange]\nAlpha=7\n\n"
                               "[Parameters]\nGamma = 1e-1\nBeta=-2.5x\n\n"
                               "[Settings]\nzoom=2\nAUTHOR=you\n\n"
                               "[Preset]\n[Parameters]\nAlpha=7\n");
    EXPECT_TRUE(result.succeeded) << result.message;
    EXPECT_EQ(result.values, (Values{1.0f, 0.0f, 0.1f}));  // text behind a number makes it 0
    EXPECT_EQ(plugin.values, (CustomValues{{"zoom", "2"}, {"AUTHOR", "me"}, {"TAGS", "a,b"}}));
    EXPECT_EQ(plugin.customChanges, 1);
    EXPECT_EQ(plugin.stateChanges, 2);
    EXPECT_EQ(plugin.name, "Big \"One\"");
    EXPECT_TRUE(plugin.isModified);
    EXPECT_EQ(plugin.names, 1);
}

TEST_F(PresetLoaderTest, TextWithoutSettingsClearsThem)
{
    plugin.values = {{"zoom", "2"}};
    EXPECT_TRUE(load(textHeader + "Description=d\n[Parameters]\nAlpha=-4\n").succeeded);
    EXPECT_EQ(plugin.values, (CustomValues{{"DESCRIPTION", "d"}}));
    EXPECT_EQ(plugin.customChanges, 0);
    EXPECT_EQ(plugin.names, 0);
    for (const auto& [text, modified] :
         {std::pair("0", false), std::pair("1", true), std::pair("x", true), std::pair("2", true)}) {
        load(textHeader + "Name=n\nModified=" + text + "\n");
        EXPECT_EQ(plugin.isModified, modified) << text;
    }
}

TEST_F(PresetLoaderTest, AnotherSectionMayBeExpected)
{
    const std::string text = "[Mine]\nSignature=Test\nVersion=5\n[Parameters]\nAlpha=4\n";
    EXPECT_EQ(load(text).message, "Invalid preset header.");
    EXPECT_EQ(load(text, -1, "Mine").values.front(), 4.0f);
    collection.section.assign("Mine");
    EXPECT_EQ(load(text).values.front(), 4.0f);
}

TEST_F(PresetLoaderTest, FindsAliases)
{
    parameters[1]->aliases = {"Old Beta"};
    EXPECT_EQ(load(textHeader + "[Parameters]\nOld Beta=5\n").values, (Values{1.0f, 5.0f, 3.0f}));
}

// Writing.

TEST_F(PresetLoaderTest, WritesBinaryExactly)
{
    set({4.0f, 5.5f, -6.0f});
    plugin.values = {{"b", "2"}, {"a", ""}};
    std::ostringstream plain;
    EXPECT_TRUE(PresetWriter(collection, &plugin).writePreset(plain, 5));
    EXPECT_EQ(plain.str(), presetBytes("Test", 5, {4.0f, 5.5f, -6.0f}));
    plugin.holdsCustomValues = true;
    std::ostringstream custom;
    EXPECT_TRUE(PresetWriter(collection, &plugin).writePreset(custom, 5));
    EXPECT_EQ(custom.str(), plain.str() + "CuSV" + word(1u) + word(2u) + counted("a") + counted("") +
                                counted("b") + counted("2"));
    std::ostringstream ofSection;
    EXPECT_TRUE(PresetWriter(collection, nullptr).writePreset(ofSection, 5));
    EXPECT_EQ(ofSection.str(), plain.str());
}

TEST_F(PresetLoaderTest, WritesTextExactly)
{
    set({0.1f, -2.0f, 3e-5f});
    plugin.name = "N";
    plugin.isModified = true;
    plugin.values = {{"AUTHOR", ""}, {"TAGS", "a\nb"}, {"zoom", " 2"}, {"NAME", "x"}};
    std::ostringstream text;
    EXPECT_TRUE(PresetWriter(collection, &plugin).writeText(text, 5, PresetWriter::TextOptions::WithName));
    // The doubles next to the floats, to 15 digits.
    EXPECT_EQ(text.str(), "[Preset]\nSignature=Test\nVersion=5\nName=N\nModified=1\nTags=\"a\\nb\"\n\n"
                          "[Parameters]\nAlpha=0.100000001490116\nBeta=-2\nGamma=2.99999992421363e-05\n\n"
                          "[Settings]\nNAME=x\nzoom=\" 2\"\n");
    std::ostringstream ofSection;
    collection.section.assign("Mine");
    EXPECT_TRUE(PresetWriter(collection, nullptr).writeText(ofSection, 1));
    EXPECT_EQ(ofSection.str(),
              "[Mine]\nSignature=Test\nVersion=1\n\n"
              "[Parameters]\nAlpha=0.100000001490116\nBeta=-2\nGamma=2.99999992421363e-05\n");
}

TEST_F(PresetLoaderTest, EveryFloatSurvivesAsText)
{
    std::uint32_t state = 1;
    for (int round = 0; round < 2000; ++round) {
        state = state * 1664525u + 1013904223u;
        const float number =
            std::bit_cast<float>(0x30000000u + (state >> 8) % 0x11000000u);  // below 5e-10..8
        set({number, -number, 0.0f});
        const Values before = values();
        std::ostringstream text;
        ASSERT_TRUE(PresetWriter(collection, &plugin).writeText(text, 5));
        const Loaded result = load(text.str());
        ASSERT_TRUE(result.succeeded);
        ASSERT_EQ(result.values, before);
    }
}

TEST_F(PresetLoaderTest, RewritesAPartInPlace)
{
    set({4.0f, 5.0f, 6.0f});
    const std::string tail = "and more";
    std::stringstream stream(presetBytes("Test", 5, {7.0f, 8.0f, 9.0f, 10.0f}) + tail);
    const PresetWriter writer(collection, &plugin);
    EXPECT_TRUE(writer.writePreset(stream, 5, 1, 1));
    EXPECT_EQ(stream.str(), presetBytes("Test", 5, {7.0f, 5.0f, 9.0f, 10.0f}) + tail);
    stream.seekg(0);
    EXPECT_TRUE(writer.writePreset(stream, 5, 1, std::numeric_limits<int>::max()));
    EXPECT_EQ(stream.str(), presetBytes("Test", 5, {7.0f, 5.0f, 6.0f, 10.0f}) + tail);
    stream.seekg(0);
    EXPECT_TRUE(writer.writePreset(stream, 5, 3, 1));  // none of ours
    EXPECT_EQ(stream.str(), presetBytes("Test", 5, {7.0f, 5.0f, 6.0f, 10.0f}) + tail);
}

TEST_F(PresetLoaderTest, RewritesNothingThatIsNotItsOwn)
{
    set({4.0f, 5.0f, 6.0f});
    const std::string good = presetBytes("Test", 5, {7.0f, 8.0f, 9.0f});
    for (const std::string& bytes :
         {std::string(), presetBytes("Tess", 5, {7.0f, 8.0f, 9.0f}),
          presetBytes("Test", 4, {7.0f, 8.0f, 9.0f}), presetBytes("Test", 5, {7.0f, 8.0f}),
          presetBytes("Test", 5, {7.0f, 8.0f}) + "tail", good.substr(0, good.size() - 1), textHeader}) {
        std::stringstream stream(bytes);
        EXPECT_FALSE(PresetWriter(collection, &plugin).writePreset(stream, 5, 0, 3));
        EXPECT_EQ(stream.str(), bytes);
    }
}

}  // namespace
