#include "render/RenderOptions.h"

#include "render/RenderError.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::optional<RenderOptions> parse(std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), "sordelin-render");
    std::ostringstream out;
    return parseRenderOptions(static_cast<int>(arguments.size()), arguments.data(), out);
}

std::string messageFor(const std::vector<const char*>& arguments)
{
    try {
        parse(arguments);
    } catch (const RenderError& error) {
        return error.what();
    }
    return "no error";
}

}  // namespace

TEST(RenderOptions, SettingsKeepTheirOrderAndLeaveTheFilesAlone)
{
    const auto options =
        parse({"--set", "A=1 ms", "in.wav", "--set", "B=-3", "out.wav", "-y", "--tempo", "96.5"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->settings, (std::vector<std::string>{"A=1 ms", "B=-3"}));
    EXPECT_EQ(options->input, "in.wav");
    EXPECT_EQ(options->output, "out.wav");
    EXPECT_TRUE(options->overwrite);
    EXPECT_EQ(options->tempoBpm, 96.5);
    EXPECT_EQ(options->blockFrames, 128u);
    EXPECT_FALSE(options->tailSeconds);
}

TEST(RenderOptions, ListingParametersNeedsNoFiles)
{
    const auto options = parse({"--list-parameters"});
    ASSERT_TRUE(options);
    EXPECT_TRUE(options->listParameters);
}

TEST(RenderOptions, HelpAsksForNothingElse) { EXPECT_FALSE(parse({"--help"})); }

TEST(RenderOptions, SaysInOneLineWhatIsWrong)
{
    struct Row {
        std::vector<const char*> arguments;
        const char* message;
    };
    for (const auto& [arguments, message] : {
             Row{{}, "no input file given; --help tells more"},
             Row{{"a.wav"}, "no output file given; --help tells more"},
             Row{{"a", "b", "--tempo", "9.9"}, "--tempo takes a number from 10 to 1000, not \"9.9\""},
             Row{{"a", "b", "--tempo", "fast"}, "--tempo takes a number from 10 to 1000, not \"fast\""},
             Row{{"a", "b", "--block", "0"}, "--block takes a number from 1 to 16384, not \"0\""},
             Row{{"a", "b", "--block", "16385"}, "--block takes a number from 1 to 16384, not \"16385\""},
             Row{{"a", "b", "--block", "1.5"}, "--block takes a whole number, not \"1.5\""},
             Row{{"a", "b", "--tail", "-1"}, "--tail takes a number from 0 to 3600, not \"-1\""},
             Row{{"a", "b", "--song-position", "4"}, "--song-position needs a song: give its --tempo too"},
             Row{{"a", "b", "--tempo", "90", "--song-position", "-1"},
                 "--song-position takes a number from 0 to 100000, not \"-1\""},
             Row{{"a", "b", "--plot", "./b"}, "output and plot are both \"b\""},
         })
        EXPECT_EQ(messageFor(arguments), message);
    for (const auto& arguments :
         {std::vector<const char*>{"a", "b", "c"}, {"a", "b", "--speed", "3"}, {"a", "b", "--tempo"}}) {
        EXPECT_NE(messageFor(arguments), "no error");
        EXPECT_EQ(messageFor(arguments).find('\n'), std::string::npos);
    }
}

TEST(RenderOptions, NeverWritesOverWhatItReads)
{
    const TemporaryFolder folder;
    folder.write("in.wav", "");
    const std::string input = (folder / "in.wav").string();
    const std::string sameFile = (folder / "." / "in.wav").string();
    const std::string message = "the rendering would replace \"" + input + "\", which it reads";
    EXPECT_EQ(messageFor({input.c_str(), sameFile.c_str(), "-y"}), message);
    EXPECT_EQ(messageFor({input.c_str(), "out.wav", "--plot", sameFile.c_str(), "-y"}), message);
    for (const char* read : {"--sidechain", "--automate", "--midi"})
        EXPECT_EQ(messageFor({"other.wav", sameFile.c_str(), read, input.c_str(), "-y"}), message);
}
