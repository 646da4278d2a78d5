#include "audition/FactorySource.h"
#include "audition/PresetSettings.h"
#include "clap_host/ClapModule.h"
#include "render/RenderError.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

const std::string header = "[Preset]\nSignature=MStd\nVersion=5\nDescription=A test\n";

FactorySource sourceOf(const std::string& text, const char* name = "a.mvp")
{
    const TemporaryFolder folder;
    folder.write(name, text);
    return readFactorySource(folder / name, "In");
}

std::string messageOf(const std::string& text)
{
    try {
        sourceOf(text);
    } catch (const RenderError& error) {
        const std::string message = error.what();
        return message.substr(message.rfind("a.mvp"));
    }
    return "";
}

/// The value that a source gives to a parameter of this name.
double valueOf(const FactorySource& source, const char* name)
{
    const ClapModule module(SORDELIN_MODULE);
    ClapInstance instance(module);
    std::vector<ClapEvent> events = defaultEvents(instance.parameters());
    applySource(events, instance.parameters(), source);
    const clap_id id = instance.parameters().require(name).id;
    return std::ranges::find(events, id, [](const ClapEvent& event) { return event.parameter.param_id; })
        ->parameter.value;
}

std::string refusalOf(const std::string& setting)
{
    try {
        valueOf(sourceOf(header + "[Parameters]\n" + setting + "\n"), "Wet Pan");
    } catch (const RenderError& error) {
        const std::string message = error.what();
        return message.substr(message.rfind("a.mvp"));
    }
    return "";
}

}  // namespace

TEST(FactorySource, HoldsWhatTheTextSays)
{
    const FactorySource source =
        sourceOf(header + "Author=Ada\nTags=dub, long\n; why\n\n[Parameters]\nDelay 1 Time=350 ms\n");
    EXPECT_EQ(source.label(), "In/a");
    EXPECT_EQ(source.author, "Ada");
    EXPECT_EQ(source.description, "A test");
    EXPECT_EQ(source.tags, (std::vector<std::string>{"dub", "long"}));
    ASSERT_EQ(source.settings.size(), 1u);
    EXPECT_EQ(source.settings[0].name, "Delay 1 Time");
    EXPECT_EQ(source.settings[0].text, "350 ms");
    EXPECT_EQ(source.settings[0].line, 10);
}

TEST(FactorySource, NamesFileAndLineOfAMistake)
{
    struct Row {
        std::string text;
        const char* message;
    };
    for (const auto& [text, message] :
         {Row{header + "Colour=red\n", "a.mvp, line 5: there is no header \"Colour\""},
          Row{header + "[Parameters]\nWet Pan=0\nWet Pan=1\n",
              "a.mvp, line 7: \"Wet Pan\" stands here for the second time"},
          Row{header + "\n[Params]\n", "a.mvp, line 6: there is no section \"Params\""},
          Row{header + "Wet Pan\n",
              "a.mvp, line 5: this is neither a section, nor \"key=value\", nor a comment"},
          Row{"[Preset]\nSignature=MSlg\n", "a.mvp, line 2: the signature must be \"MStd\""},
          Row{"[Preset]\nSignature=MStd\n", "a.mvp, line 2: the preset has no description"}})
        EXPECT_EQ(messageOf(text), message);
}

TEST(FactorySource, ListsFoldersInTheirOrder)
{
    const TemporaryFolder folder;
    for (const char* name : {"_10 Late", "_2 Early", "None"})
        std::filesystem::create_directory(folder / name);
    for (const char* name : {"_10 Late/a.mvp", "_2 Early/b.mvp", "_2 Early/a.mvp", "None/a.mvp"})
        folder.write(name, header);
    folder.write("None/notes.txt", "no preset");
    std::vector<std::string> labels;
    for (const FactorySource& source : readFactorySources(folder / ""))
        labels.push_back(source.label());
    EXPECT_EQ(labels, (std::vector<std::string>{"None/a", "_2 Early/a", "_2 Early/b", "_10 Late/a"}));
}

TEST(PresetSettings, SetsParametersByTheirTexts)
{
    const FactorySource whole = sourceOf(header + "[Parameters]\nWet Pan=-0.5\nFilter 2 Slope=48\n");
    EXPECT_NEAR(valueOf(whole, "Wet Pan"), -0.5, 1e-6);
    EXPECT_EQ(valueOf(whole, "Filter 2 Slope"), 3.0);
    EXPECT_EQ(valueOf(whole, "Dry Level"), 1.0);  // its default

    const char* const section = "[Preset]\nSignature=MStd\nVersion=1\n[Parameters]\n";
    const FactorySource xlfo =
        sourceOf(section + std::string("Num Active Steps=5\nStep 2 Value=0.25\n"), "a.xlfo");
    EXPECT_EQ(valueOf(xlfo, "Num Active XLFO 1 Steps"), 5.0);
    EXPECT_NEAR(valueOf(xlfo, "XLFO 1 Step 2 Value"), 0.25, 1e-6);
    EXPECT_EQ(valueOf(sourceOf(section + std::string("Input=Side Chain\n"), "a.ef"), "EF 1Input"), 1.0);
}

TEST(PresetSettings, RefusesWhatThePlugInReadsOtherwise)
{
    EXPECT_EQ(refusalOf("Wet Pan=left"), "a.mvp, line 6: \"Wet Pan\" can't be \"left\"");
    EXPECT_EQ(refusalOf("Wet Pan=1.5"), "a.mvp, line 6: \"Wet Pan\" shows \"1.000\" for \"1.5\"");
    EXPECT_EQ(refusalOf("Delay 1 Tine=5 ms").substr(0, 56),
              "a.mvp, line 6: there is no parameter \"Delay 1 Tine\", but");
}
