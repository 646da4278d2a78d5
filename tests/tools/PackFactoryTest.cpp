#include "pack/PackError.h"
#include "pack_factory/ArchiveWriter.h"
#include "pack_factory/PresetText.h"
#include "presets/FactoryArchive.h"
#include "support/MemoryFolders.h"
#include "support/PresetFiles.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

namespace fs = std::filesystem;

const std::string header = "[Preset]\nSignature=MStd\nVersion=5\n";

std::string contentOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

float valueAt(const std::string& preset, std::size_t index)
{
    float value = 0.0f;
    std::memcpy(&value, preset.data() + 12 + 4 * index, sizeof value);
    return value;
}

std::string messageOf(const std::string& text, const char* name)
{
    try {
        packPreset(text, name);
    } catch (const PackError& error) {
        return error.what();
    }
    return "";
}

}  // namespace

TEST(PackFactory, PutsValuesWhereHostsHaveThem)
{
    const std::string preset =
        packPreset(header + "\n[Parameters]\n; why\nDelay 2 Time=804.2 ms\nDry Enabled=Disabled\n"
                            "EF 1Input=Side Chain\nXLFO 2 Frequency=500 Hz\n",
                   "a.mvp");
    ASSERT_EQ(preset.size(), 2832u);
    EXPECT_EQ(preset.substr(0, 12), std::string("MStd\5\0\0\0\xC1\2\0\0", 12));  // 705 values
    struct Row {
        std::size_t index;
        float value;
    };
    for (const auto& [index, value] : {Row{7, 0.5f}, Row{704, 0.0f}, Row{537, 1.0f}, Row{122, 0.98f},
                                       Row{0, 0.29333879f}, Row{21, 1.0f}, Row{9, 0.0f}})
        EXPECT_NEAR(valueAt(preset, index), value, 1e-6f) << index;
}

TEST(PackFactory, PacksPresetsOfSections)
{
    struct Row {
        const char* file;
        const char* setting;
        std::size_t size;
        std::size_t index;
    };
    for (const auto& [file, setting, count, index] :
         {Row{"a.delays", "Delay Link=Linked", 17, 15}, Row{"a.filters", "Routing=Parallel", 15, 14},
          Row{"a.filters", "Filter Routing=Parallel", 15, 14}, Row{"a.xlfo", "Snap=Snap", 73, 7},
          Row{"a.eg", "Triggering=Side Chain", 8, 3}, Row{"a.ef", "Input=Side Chain", 3, 0},
          Row{"a.midi", "Response Curve=Exp", 3, 2}}) {
        const std::string preset =
            packPreset(joined("[Preset]\nSignature=MStd\nVersion=1\n\n[Parameters]\n", setting, "\n"), file);
        EXPECT_EQ(preset.size(), 12 + 4 * count) << file;
        EXPECT_EQ(valueAt(preset, index), 1.0f) << file;
    }
}

TEST(PackFactory, KeepsWhatAPresetSaysAboutItself)
{
    const std::string preset = packPreset(header + "Author=Ada\nTags=a,b\n", "a.mvp");
    EXPECT_EQ(preset.substr(2832),
              std::string("CuSV\1\0\0\0\2\0\0\0\6\0\0\0AUTHOR\3\0\0\0Ada\4\0\0\0TAGS\3\0\0\0a,b", 44));
}

TEST(PackFactory, NamesFileAndLineOfAMistake)
{
    const std::string parameters = header + "\n[Parameters]\n";  // 5 lines
    struct Row {
        std::string text;
        const char* name;
        const char* message;
    };
    for (const auto& [text, name, message] :
         {Row{parameters + "Delay 3 Time=0\n", "dir/a.mvp",
              "dir/a.mvp:6: unknown parameter \"Delay 3 Time\""},
          Row{parameters + "Wet Pan=0\n\nWet Pan=0", "a.mvp", "a.mvp:8: \"Wet Pan\" stands here twice"},
          Row{parameters + "Wet Pan=left\n", "a.mvp", "a.mvp:6: \"Wet Pan\" can't be \"left\""},
          Row{parameters + "Wet Pan=1.5\n", "a.mvp", "a.mvp:6: \"Wet Pan\" shows \"1.000\" for \"1.5\""},
          Row{parameters + "Delay Link=On\n", "a.mvp", "a.mvp:6: \"Delay Link\" can't be \"On\""},
          Row{parameters + "Wet Pan\n", "a.mvp", "a.mvp:6: this is neither [section] nor key=value"},
          Row{"Wet Pan=0\n", "a.mvp", "a.mvp:1: a preset begins with [Preset]"},
          Row{"", "a.mvp", "a.mvp:0: a preset begins with [Preset]"},
          Row{header + "Autor=Ada\n", "a.mvp", "a.mvp:4: unknown key \"Autor\""},
          Row{header + "\n[Params]\n", "a.mvp", "a.mvp:5: unknown section [Params]"},
          Row{"[Preset]\nSignature=MSlg\nVersion=5\n[Parameters]\n", "a.mvp",
              "a.mvp:4: the signature isn't MStd"},
          Row{"[Preset]\nSignature=MStd\nVersion=5\n[Parameters]\n", "a.xlfo",
              "a.xlfo:4: the version isn't 1"},
          Row{header, "a.txt", "a.txt: no kind of preset has this extension"}})
        EXPECT_EQ(messageOf(text, name), message);
}

TEST(PackFactory, ArchivesAFolderSoThatItUnpacksAgain)
{
    const MemoryFolders fast;
    const TemporaryFolder source;
    putPreset(source, "FactoryPresets/b.mvp", header);
    putPreset(source, "FactoryPresets/_1 In/a.mvp", header + "\n[Parameters]\nWet Pan=1\n");
    putPreset(source, "FactoryPresets/.hidden", "no preset");
    putPreset(source, "ApplicationData/Component Presets/EF/e.ef", "[Preset]\nSignature=MStd\nVersion=1\n");
    const std::string archive = packFolder(source / "");
    EXPECT_EQ(archive, packFolder(source / ""));
    const TemporaryFolder target;
    const FactoryArchive reader(std::as_bytes(std::span(archive)));
    EXPECT_TRUE(reader.extract("FactoryPresets", (target / "p").string(), FactoryArchive::Existing::Keep));
    EXPECT_TRUE(reader.extract("ApplicationData", (target / "d").string(), FactoryArchive::Existing::Keep));
    EXPECT_EQ(contentOf(target / "p/b.mvp"), packPreset(header, "b.mvp"));
    EXPECT_EQ(valueAt(contentOf(target / "p/_1 In/a.mvp"), 37), 1.0f);
    EXPECT_EQ(contentOf(target / "d/Component Presets/EF/e.ef").size(), 24u);
    EXPECT_FALSE(fs::exists(target / "p/.hidden"));
    putPreset(source, "FactoryPresets/c.mvp", header + "x\n");
    EXPECT_THROW(packFolder(source / ""), PackError);
    EXPECT_THROW(packFolder(source / "none"), PackError);
}
