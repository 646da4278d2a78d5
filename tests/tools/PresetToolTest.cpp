#include "preset/PresetTool.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::string failureOf(const std::function<void()>& act)
{
    try {
        act();
    } catch (const PresetToolError& error) {
        return error.what();
    }
    return "no error";
}

}  // namespace

TEST(PresetTool, TurnsBothFormsIntoOneAnother)
{
    const TemporaryFolder folder;
    folder.write("a.mvp", "[Preset]\nSignature=MStd\nVersion=5\nAuthor=Somebody\nTags=Dub,Dark\n\n"
                          "[Parameters]\nDelay 1 Pan=-0.5\nFilter 1 Characteristic=3\n");
    convertPreset(folder / "a.mvp", folder / "b.mvp", PresetForm::Binary);
    convertPreset(folder / "b.mvp", folder / "c.mvp", PresetForm::Text);
    convertPreset(folder / "c.mvp", folder / "d.mvp", PresetForm::Binary);
    EXPECT_EQ(folder.read("b.mvp").substr(0, 4), "MStd");
    EXPECT_EQ(folder.read("c.mvp").substr(0, 8), "[Preset]");
    EXPECT_TRUE(folder.read("d.mvp") == folder.read("b.mvp"));
    for (const char* file : {"a.mvp", "b.mvp", "c.mvp"}) {
        std::ostringstream out;
        showPreset(folder / file, out);
        EXPECT_NE(out.str().find(file[0] == 'b' ? "binary, version 5, 705 values" : "text, version 5"),
                  std::string::npos);
        EXPECT_NE(out.str().find("  Somebody\n  Dub,Dark\n    Delay 1 Pan: "), std::string::npos)
            << out.str();
        EXPECT_NE(out.str().find("Filter 1 Characteristic: "), std::string::npos);
    }

    folder.write("a.ef", "[Preset]\nSignature=MStd\nVersion=1\n\n[Parameters]\nAttack=0.5\n");
    convertPreset(folder / "a.ef", folder / "b.ef", PresetForm::Binary);
    EXPECT_EQ(folder.read("b.ef").size(), 12u + 3 * 4);
}

TEST(PresetTool, SaysWhatIsWrong)
{
    const TemporaryFolder folder;
    folder.write("good.eg", "[Preset]\nSignature=MStd\nVersion=1\n\n[Parameters]\nSustain=0\n");
    folder.write("old.mvp", std::string("MStd\3\0\0\0\0\0\0\0", 12));
    folder.write("other.txt", "no preset");
    const auto show = [&](const char* file) {
        return failureOf([&] {
            std::ostringstream out;
            showPreset(folder / file, out);
        });
    };
    EXPECT_NE(show("old.mvp").find("old.mvp: Preset version not supported: 3"), std::string::npos);
    EXPECT_NE(show("other.txt").find("no kind of preset"), std::string::npos);
    EXPECT_NE(show("none.mvp").find("Incorrect file permissions"), std::string::npos);
    EXPECT_NE(failureOf([&] {
                  convertPreset(folder / "good.eg", folder / "good.ef", PresetForm::Text);
              }).find("another kind"),
              std::string::npos);
    std::ostringstream out;
    EXPECT_EQ(checkPresets(folder / "", out), 1);
    EXPECT_NE(out.str().find("2 presets, 1 of them don't load"), std::string::npos) << out.str();
    EXPECT_NE(failureOf([&] { checkPresets(folder / "nowhere", out); }), "no error");
}
