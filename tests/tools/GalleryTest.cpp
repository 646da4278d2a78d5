#include "gallery/GalleryError.h"
#include "gallery/GalleryJob.h"
#include "gallery/OffscreenGallery.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <set>
#include <sstream>

namespace gallery {
namespace {

std::vector<ScriptStep> Script(const std::string& text)
{
    std::istringstream stream(text);
    return ReadScript(stream);
}

std::string ErrorOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const GalleryError& error) {
        return error.what();
    }
    return "no error";
}

std::optional<GalleryOptions> Parse(std::vector<const char*> words, std::ostream& out)
{
    words.insert(words.begin(), "sordelin-gallery");
    return ParseGalleryOptions(static_cast<int>(words.size()), words.data(), out);
}

/// How many pixels differ.
int Difference(const gui::Bitmap& a, const gui::Bitmap& b)
{
    const auto count = static_cast<std::size_t>(a.GetSize().x) * static_cast<std::size_t>(a.GetSize().y);
    int different = 0;
    for (std::size_t i = 0; i < count; ++i)
        different += a.GetPixels()[i] != b.GetPixels()[i];
    return different;
}

// What was repainted piece by piece, while a hand went over everything, looks as if it were painted at once.
TEST(Gallery, RepaintsWhatChanges)
{
    for (const float scale : {1.0f, 1.25f, 2.0f}) {
        OffscreenGallery gallery(scale);
        gui::Bitmap whole(gallery.Ui().Backing());
        for (std::size_t page = 0; page < Gallery::PageNames().size(); ++page) {
            SCOPED_TRACE(testing::Message() << Gallery::PageNames()[page] << " at " << scale);
            const gui::Bitmap& picture = gallery.StillPicture(static_cast<int>(page));
            ASSERT_EQ(picture.GetSize().x, std::lround(926 * scale));
            ASSERT_EQ(picture.GetSize().y, std::lround(514 * scale));
            std::set<std::uint32_t> colours;
            std::for_each_n(picture.GetPixels(), picture.GetSize().x * picture.GetSize().y,
                            [&colours](std::uint32_t pixel) { colours.insert(pixel); });
            EXPECT_GT(colours.size(), 100u);

            std::string hand;
            for (int y = 60; y < 480; y += 70)
                for (int x = 30; x < 920; x += 110)
                    hand += "move " + std::to_string(x) + ' ' + std::to_string(y) + "\npress left\nmove " +
                            std::to_string(x + 9) + ' ' + std::to_string(y - 15) +
                            "\nwait 20\nrelease left\n";
            gallery.Play(Script(hand));
            gallery.Picture();
            gallery.Play(Script("move 500 300\nwait 40\nwheel 0 -1\nwait 40"));
            gallery.PaintWhole(whole);
            EXPECT_EQ(Difference(gallery.Picture(), whole), 0);
        }
    }
}

TEST(Gallery, PlaysScripts)
{
    OffscreenGallery gallery(1.0f);
    gui::Bitmap before(gallery.Ui().Backing());
    gallery.Play(Script("wait 500"));  // what is highlighted has faded in
    gallery.PaintWhole(before);
    struct {
        const char* script;
        bool changes;
    } const rows[] = {
        {"wait 100", false},
        {"move 142 120\nwait 200", true},  // over a knob
        {"move 5 300\nwait 500", false},   // and off again
        {"move 142 130\npress left\nmove 142 90\nrelease left\nmove 5 300\nwait 500", true},
        {"move 142 130\nhold ctrl\npress left\nrelease left\nhold\nmove 5 300\nwait 500",
         true},  // to its default
        {"type 2", true},
        {"page Knobs\nwait 500", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.script);
        gallery.Play(Script(row.script));
        EXPECT_EQ(Difference(gallery.Picture(), before) > 0, row.changes);
    }
}

TEST(Gallery, TellsWhatIsWrongWithScripts)
{
    const char* const rows[][2] = {
        {"wait 5\nmvoe 1 2", "line 2: there is no command \"mvoe\"; did you mean \"move\""},
        {"\n# nothing\nmove 1", "line 3: \"move\" takes two coordinates"},
        {"move 1 2,5", "line 1: \"2,5\" is no number"},
        {"press middle", "line 1: there is no button \"middle\""},
        {"hold ctrl sihft", "line 1: there is no key to hold \"sihft\"; did you mean \"shift\""},
        {"page Buttns", "line 1: there is no page \"Buttns\"; did you mean \"Buttons\"; --list shows them"},
        {"scale 110", "line 1: the scale is one of 100, 125, 150, 175, 200, 225, 250, 300 percent, not 110"},
        {"shot", "line 1: \"shot\" takes a file"},
        {"wait -1", "line 1: time doesn't go backwards"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ErrorOf([&] { Script(row[0]); }), row[1]);
}

TEST(Gallery, ReadsItsCommandLine)
{
    std::ostringstream list, help;
    EXPECT_FALSE(Parse({"--list"}, list));
    EXPECT_EQ(list.str().substr(0, 14), "Knobs\nButtons\n");
    EXPECT_FALSE(Parse({"--help"}, help));
    EXPECT_NE(help.str().find("--script"), std::string::npos);
    const auto options = Parse({"--page", "text", "--scale", "150", "--png", "a.png"}, list);
    ASSERT_TRUE(options);
    EXPECT_EQ(options->page, Gallery::PageOf("Text"));
    EXPECT_EQ(options->scale, 1.5f);
    EXPECT_EQ(ErrorOf([&] { Parse({"--scale", "90"}, list); }).substr(0, 20), "the scale is one of ");
    EXPECT_NE(ErrorOf([&] { Parse({"--png", "a", "--all", "b"}, list); }), "no error");
}

TEST(Gallery, WritesPictures)
{
    const TemporaryFolder folder;
    GalleryOptions options;
    options.scale = 2.0f;
    options.png = folder / "page.png";
    options.script = folder / "script";
    std::ofstream(options.script) << "page Motion\nshot " << (folder / "shot.png").string() << '\n';
    std::ostringstream out;
    RunGalleryJob(options, out, out);
    for (const char* name : {"page.png", "shot.png"}) {
        std::ifstream file(folder / name, std::ios::binary);
        std::string head(24, '\0');
        file.read(head.data(), 24);
        EXPECT_EQ(head.substr(16), std::string("\0\0\x07\x3C\0\0\x04\x04", 8)) << name;  // 1852 x 1028
    }
    options.png = folder / "no folder" / "page.png";
    EXPECT_NE(ErrorOf([&] { RunGalleryJob(options, out, out); }), "no error");
    options.script = folder / "none";
    EXPECT_NE(ErrorOf([&] { RunGalleryJob(options, out, out); }).find("can't be read"), std::string::npos);
}

}  // namespace
}  // namespace gallery
