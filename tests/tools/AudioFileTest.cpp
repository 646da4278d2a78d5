#include "render/AudioFile.h"

#include "render/RenderError.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>
#include <cstdint>
#include <cstring>

namespace {

/// Two channels that have nothing in common, with the ends of the range among them.
StereoSignal testSignal(std::size_t frames, double sampleRate)
{
    StereoSignal signal;
    signal.sampleRate = sampleRate;
    for (std::size_t i = 0; i < frames; ++i) {
        signal.left.push_back(std::sin(static_cast<float>(i)));
        signal.right.push_back(i % 2 == 0 ? 1.0f : -1.0f);
    }
    return signal;
}

StereoSignal roundTrip(const std::filesystem::path& file, const StereoSignal& signal)
{
    PendingFile pending(file, PendingFile::Existing::Refuse);
    writeAudioFile(pending, signal, audioFormatFor(file));
    pending.commit();
    return readAudioFile(file);
}

float largestDifference(const std::vector<float>& a, const std::vector<float>& b)
{
    float largest = 0.0f;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::fabs(a[i] - b[i]));
    return largest;
}

std::string messageOf(const std::filesystem::path& file)
{
    try {
        readAudioFile(file);
    } catch (const RenderError& error) {
        return error.what();
    }
    return "no error";
}

void writeSixteenBit(const std::filesystem::path& file, int channels,
                     const std::vector<std::int16_t>& samples)
{
    SF_INFO info{};
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    info.channels = channels;
    info.samplerate = 22050;
    SNDFILE* sound = sf_open(file.c_str(), SFM_WRITE, &info);
    sf_write_short(sound, samples.data(), static_cast<sf_count_t>(samples.size()));
    sf_close(sound);
}

}  // namespace

TEST(AudioFile, KeepsEachSampleAsExactlyAsTheFormatCan)
{
    // 24 bits: half of a step of 2^-23 from rounding, and a whole one at +1, which the range doesn't hold.
    struct Row {
        const char* name;
        double sampleRate;
        float tolerance;
    };
    const TemporaryFolder folder;
    for (const auto& [name, sampleRate, tolerance] :
         {Row{"a.wav", 44100.0, 0.0f}, Row{"b.WAV", 192000.0, 0.0f}, Row{"c.flac", 48000.0, 1.2e-7f},
          Row{"d.aif", 8000.0, 1.2e-7f}, Row{"e.aiff", 96000.0, 1.2e-7f}}) {
        const StereoSignal signal = testSignal(10000, sampleRate);
        const StereoSignal back = roundTrip(folder / name, signal);
        ASSERT_EQ(back.frames(), signal.frames()) << name;
        EXPECT_EQ(back.sampleRate, sampleRate) << name;
        EXPECT_LE(largestDifference(back.left, signal.left), tolerance) << name;
        EXPECT_LE(largestDifference(back.right, signal.right), tolerance) << name;
    }
}

TEST(AudioFile, FloatFilesKeepWhatLiesBeyondFullScaleAndOthersHoldIt)
{
    const TemporaryFolder folder;
    StereoSignal loud;
    loud.sampleRate = 48000.0;
    loud.left.assign(100, 3.0f);
    loud.right.assign(100, -3.0f);
    EXPECT_EQ(roundTrip(folder / "a.wav", loud).left[50], 3.0f);
    // A sample that wrapped round would change its sign.
    const StereoSignal held = roundTrip(folder / "a.flac", loud);
    EXPECT_NEAR(held.left[50], 1.0f, 1.2e-7f);
    EXPECT_EQ(held.right[50], -1.0f);
    EXPECT_TRUE(audioFormatFor("a.flac").clips);
    EXPECT_FALSE(audioFormatFor("a.wav").clips);
}

TEST(AudioFile, EqualSignalsGiveEqualBytes)
{
    const TemporaryFolder folder;
    const StereoSignal signal = testSignal(1000, 44100.0);
    roundTrip(folder / "a.wav", signal);
    roundTrip(folder / "b.wav", signal);
    EXPECT_EQ(folder.read("a.wav"), folder.read("b.wav"));
}

TEST(AudioFile, OneChannelBecomesBoth)
{
    const TemporaryFolder folder;
    writeSixteenBit(folder / "mono.wav", 1, {16384, -8192});
    const StereoSignal signal = readAudioFile(folder / "mono.wav");
    EXPECT_EQ(signal.sampleRate, 22050.0);
    EXPECT_EQ(signal.left, (std::vector<float>{0.5f, -0.25f}));
    EXPECT_EQ(signal.right, signal.left);
}

TEST(AudioFile, TellsWhyAFileCannotBeRead)
{
    const TemporaryFolder folder;
    writeSixteenBit(folder / "three.wav", 3, {1, 2, 3});
    writeSixteenBit(folder / "empty.wav", 2, {});
    folder.write("text.wav", "no sound at all");
    struct Row {
        const char* name;
        const char* reason;
    };
    for (const auto& [name, reason] : {Row{"missing.wav", "No such file or directory"},
                                       Row{"three.wav", "it has 3 channels, and this is a stereo effect"},
                                       Row{"empty.wav", "it holds no sound"}, Row{"", "it is a folder"}})
        EXPECT_EQ(messageOf(folder / name), "can't read \"" + (folder / name).string() + "\": " + reason);
    EXPECT_NE(messageOf(folder / "text.wav"), "no error");
}

TEST(AudioFile, RefusesUnknownExtensionsAndImpossibleRates)
{
    for (const char* name : {"a.mp4", "wav", "a", "a.wav.txt"})
        EXPECT_THROW(audioFormatFor(name), RenderError) << name;
    const TemporaryFolder folder;
    EXPECT_THROW(roundTrip(folder / "a.flac", testSignal(10, 2e6)), RenderError);
    EXPECT_EQ(folder.entryCount(), 0);
}
