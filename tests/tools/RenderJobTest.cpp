#include "render/RenderJob.h"

#include "render/AudioFile.h"
#include "render/RenderError.h"
#include "support/ControllerMapFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace {

constexpr double sampleRate = 48000.0;

/// A folder with an impulse in a file, to be sent through the real module.
class RenderJob : public testing::Test {
protected:
    RenderJob()
    {
        StereoSignal impulse{sampleRate, std::vector<float>(4800), std::vector<float>(4800)};
        impulse.left[0] = impulse.right[0] = 0.5f;
        write("impulse.wav", impulse);
        options.input = folder / "impulse.wav";
        options.output = folder / "out.wav";
        options.plugin = SORDELIN_MODULE;
    }

    void write(const char* name, const StereoSignal& signal)
    {
        PendingFile file(folder / name, PendingFile::Existing::Refuse);
        writeAudioFile(file, signal, audioFormatFor(folder / name));
        file.commit();
    }

    StereoSignal render()
    {
        std::ostringstream messages;
        runRenderJob(options, summary, messages);
        return readAudioFile(options.output);
    }

    std::string messageOfFailure()
    {
        try {
            render();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "no error";
    }

    TemporaryFolder folder;
    RenderOptions options;
    std::ostringstream summary;
};

std::size_t lastSound(const StereoSignal& signal)
{
    std::size_t last = 0;
    for (std::size_t i = 0; i < signal.frames(); ++i) {
        if (signal.left[i] != 0.0f)
            last = i;
    }
    return last;
}

}  // namespace

TEST_F(RenderJob, WaitsForAnEchoAfterALongSilenceAndEndsHalfASecondBehindIt)
{
    options.settings = {"Delay 1 Time=4 sec", "Delay 2 Time=4 sec", "Filter 1 Enabled=Disabled",
                        "Filter 2 Enabled=Disabled"};
    const StereoSignal output = render();
    // 4 s are 192000 frames; the time in float and its truncation may make one less of them.
    EXPECT_NEAR(static_cast<double>(lastSound(output)), 192000.0, 1.0);
    EXPECT_EQ(output.frames(), lastSound(output) + 1 + 24000);
    EXPECT_NE(summary.str().find("Delay 1 Time = 4.000 sec"), std::string::npos);
}

TEST_F(RenderJob, EndsExactlyWhereTheTailIsTold)
{
    options.tailSeconds = 0.25;
    EXPECT_EQ(render().frames(), 4800u + 12000u);
}

TEST_F(RenderJob, AutomationActsAtItsSampleWhateverTheBlocks)
{
    // 0.0208541667 s are 1001.0000016 frames. What was heard until then is a level of its own, and the fade
    // to the next leaves it within two frames.
    write("side.wav", {sampleRate, std::vector<float>(4800, 0.25f), std::vector<float>(4800, 0.25f)});
    folder.write("moves.csv", "seconds,parameter,value\n0.0208541667,Audition Signal,Input\n"
                              "0,Audition Signal,Side Chain\n0.021,\"audition signal\",2\n");
    options.sideChain = folder / "side.wav";
    options.automation = folder / "moves.csv";
    options.tailSeconds = 0.0;
    options.overwrite = true;
    options.blockFrames = 1;
    const StereoSignal expected = render();
    for (const std::uint32_t blockFrames : {1u, 7u, 128u, 333u, 16384u}) {
        options.blockFrames = blockFrames;
        const StereoSignal output = render();
        const auto moved = std::ranges::find_if(output.left, [](float sample) { return sample != 0.25f; });
        EXPECT_NEAR(static_cast<double>(moved - output.left.begin()), 1001.5, 0.5) << blockFrames;
        // A fade's steps may round differently where a block begins.
        for (std::size_t i = 0; i < expected.frames(); ++i)
            ASSERT_NEAR(output.left[i], expected.left[i], 1e-6f) << blockFrames << " at " << i;
    }
}

TEST_F(RenderJob, PlaysAMidiFileAtItsSamples)
{
    // Controller 20 takes the dry signal away.
    const TemporaryHome home;
    writeControllerMap(home.productData(), controllerMapBytes({{20, 34}}));  // "Dry Level"
    write("ones.wav", {sampleRate, std::vector<float>(4800, 0.5f), std::vector<float>(4800, 0.5f)});
    // 480 ticks a beat of 0.5 s: 48 ticks are 2400 frames.
    folder.write("moves.mid", std::string("MThd\0\0\0\x06\0\0\0\x01\x01\xe0MTrk\0\0\0\x08"
                                          "\x30\xb0\x14\0\0\xff\x2f\0",
                                          30));
    options.input = folder / "ones.wav";
    options.midi = folder / "moves.mid";
    options.tailSeconds = 0.0;
    const StereoSignal output = render();
    EXPECT_EQ(output.left[2400], 0.5f);
    EXPECT_LT(output.left[2401], 0.5f);
    EXPECT_LT(output.left[4799], 0.01f);

    folder.write("moves.mid", "MThd");
    options.overwrite = true;
    EXPECT_EQ(messageOfFailure(), (folder / "moves.mid").string() + ", byte 4: the file ends too soon");
}

TEST_F(RenderJob, FailsInOneLineAndLeavesNothingBehind)
{
    folder.write("moves.csv", "0,Delay 1 Time,350 ms\n1,Delay 1 Tim,350 ms\n");
    write("slow.wav", {22050.0, {0.0f}, {0.0f}});
    const auto entries = folder.entryCount();

    options.settings = {"Delay 1 Time=a while"};
    EXPECT_EQ(messageOfFailure(),
              "\"Delay 1 Time\" can't be set to \"a while\"; it goes from \"5.000 ms\" to \"5.000 sec\"");
    options.settings = {"Delay Freze=On"};
    EXPECT_EQ(messageOfFailure().find("unknown parameter \"Delay Freze\"; did you mean \"Delay Freeze\""),
              0u);
    options.settings.clear();
    options.automation = folder / "moves.csv";
    EXPECT_EQ(messageOfFailure().find((folder / "moves.csv").string() + ", line 2: unknown parameter"), 0u);
    options.automation.clear();
    options.sideChain = folder / "slow.wav";
    EXPECT_NE(messageOfFailure().find("is at 22050 Hz, the input at 48000"), std::string::npos);
    EXPECT_EQ(folder.entryCount(), entries);
}

TEST_F(RenderJob, ReplacesResultAndPictureOnlyWhenAllowed)
{
    options.plot = folder / "out.png";
    folder.write("out.png", "old");
    EXPECT_THROW(render(), RenderError);
    EXPECT_EQ(folder.read("out.png"), "old");
    EXPECT_FALSE(std::filesystem::exists(options.output));

    options.overwrite = true;
    render();
    EXPECT_EQ(folder.read("out.png").substr(1, 3), "PNG");
    EXPECT_EQ(folder.entryCount(), 3);
}

TEST_F(RenderJob, ListsEachParameterOnALineOfItsOwn)
{
    options.listParameters = true;
    runRenderJob(options, summary, summary);
    const std::string table = summary.str();
    EXPECT_EQ(std::ranges::count(table, '\n'), 706);  // 705 and the heading
    EXPECT_NE(table.find("5.000 ms .. 5.000 sec"), std::string::npos);
}

TEST_F(RenderJob, GoesOnFromAStateOrAPreset)
{
    folder.write("short.mvp", "[Preset]\nSignature=MStd\nVersion=5\n\n[Parameters]\nWet Level=0\n");
    options.settings = {"Dry Level=-INF dB", "Delay 1 Time=100 ms", "Delay 2 Time=100 ms"};
    options.saveState = folder / "saved.state";
    const StereoSignal first = render();
    options.settings.clear();
    options.loadState = options.saveState;
    options.overwrite = true;
    EXPECT_EQ(render().left, first.left);  // and the state goes over itself
    options.preset = folder / "short.mvp";
    options.saveState.clear();
    EXPECT_EQ(lastSound(render()), 0u);  // the preset's own dry level, and nothing behind it

    folder.write("wrong.state", "MVBS");
    options.loadState = folder / "wrong.state";
    EXPECT_EQ(messageOfFailure().find("the plug-in doesn't take the state "), 0u);
    options.loadState.clear();
    folder.write("wrong.mvp", "[Preset]\nSignature=None\nVersion=5\n");
    options.preset = folder / "wrong.mvp";
    const std::string failure = messageOfFailure();
    EXPECT_NE(failure.find("Unknown preset signature"), std::string::npos) << failure;
    options.preset = options.output;
    EXPECT_NE(messageOfFailure(), "no error");
}
