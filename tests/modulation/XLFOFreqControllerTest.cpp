#include "XLFOFixture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

namespace {

using Mode = XLFOFreqController::SyncMode;

/// The difference that an error of the phase by `cycles` makes in the triangle.
constexpr double ofPhase(double cycles) { return 4.0 * cycles; }

/// Expects the triangle at the song's phase, from `beats` on.
void expectInSong(const XLFOFixture& fixture, const std::vector<float>& out, double beats,
                  double cyclesPerBeat, double phaseTolerance)
{
    double worst = 0.0;
    for (std::size_t i = 0; i < out.size(); ++i) {
        const double now = beats + static_cast<double>(i) * fixture.beatsPerSample();
        worst = std::max(worst, std::fabs(out[i] - fixture.shape.at(now * cyclesPerBeat)));
    }
    EXPECT_LT(worst, ofPhase(phaseTolerance)) << cyclesPerBeat << " cycles a beat at " << beats;
}

}  // namespace

TEST(XLFOFreqController, LeavesAFreeCycleToItsFrequency)
{
    XLFOFixture fixture;
    fixture.hertz = 44.1f;
    fixture.rate.offset.assign(2.0f);
    const auto out = fixture.playSong(3.3, 44100);
    for (std::size_t i = 0; i < out.size(); ++i)
        ASSERT_NEAR(out[i], fixture.shape.at(static_cast<double>(i) / 1000.0), 1e-5);
}

TEST(XLFOFreqController, LocksTheCycleToTheSong)
{
    double cyclesPerBeat = 1.0 / 64.0;  // of 16 whole notes
    for (int mode = 1; mode <= 11; ++mode, cyclesPerBeat *= 2.0)
        for (const float offset : {1.0f, 2.0f, 0.77f}) {
            XLFOFixture fixture;
            fixture.rate.syncMode.assign(static_cast<Mode>(mode));
            fixture.rate.offset.assign(offset);
            expectInSong(fixture, fixture.playSong(1.7, 30000), 1.7, cyclesPerBeat * offset, 1e-5);
            // The song loops, goes far ahead, and to before its start.
            for (const double beats : {0.5, 4321.1, -3.9})
                expectInSong(fixture, fixture.playSong(beats, 5000), beats, cyclesPerBeat * offset, 1e-5);
        }
}

TEST(XLFOFreqController, KeepsThePhaseOffsetWhenItLocks)
{
    XLFOFixture fixture;
    fixture.rate.syncMode.assign(Mode::Notes1);
    fixture.shift = 0.3f;
    const double later = 0.3f / 0.25;  // beats
    expectInSong(fixture, fixture.playSong(2.0, 5120), 2.0 + later, 0.25, 1e-5);
    expectInSong(fixture, fixture.playSong(77.7, 5120), 77.7 + later, 0.25, 1e-5);
}

TEST(XLFOFreqController, IsAtTheSongsPhaseAfterAnHour)
{
    for (const auto& [mode, cyclesPerBeat] : {std::pair{Mode::SixtyFourth, 16.0}, {Mode::Notes1, 0.25}}) {
        XLFOFixture fixture;
        fixture.rate.syncMode.assign(mode);
        fixture.rate.offset.assign(1.3f);
        fixture.tempo = 127.3f;
        FunctionProducer idle(fixture.environment, [](std::uint64_t) { return 0.0f; });
        const double beatsPerBlock = 8192 * fixture.beatsPerSample();
        double beats = 0.0;
        for (int block = 0; block < 3600 * 44100LL / 8192; ++block) {
            fixture.rate.transportChanged(fixture.tempo, beats);
            fixture.render(idle, 8192);
            beats += beatsPerBlock;
        }
        ASSERT_GT(beats, 7637.0);
        expectInSong(fixture, fixture.playSong(beats, 8192, 8192), beats, cyclesPerBeat * 1.3f, 1e-4);
    }
}

TEST(XLFOFreqController, RampsToAnotherTempoInStepWithTheSong)
{
    XLFOFixture fixture;
    fixture.rate.syncMode.assign(Mode::Half);
    fixture.playSong(0.0, 10240);
    const double turn = 10240 * fixture.beatsPerSample();
    fixture.tempo = 180.0f;
    // Within a block the rate lags; each one begins in place.
    const auto out = fixture.playSong(turn, 51200, 256);
    for (std::size_t i = 0; i < out.size(); i += 256) {
        const double beats = turn + static_cast<double>(i) * fixture.beatsPerSample();
        ASSERT_NEAR(out[i], fixture.shape.at(beats * 0.5), ofPhase(1e-5));
    }
    EXPECT_LT(signals::largestStep(out, 0, out.size()), ofPhase(0.5 * 256.0 / 44100.0) + 2e-4);  // half a Hz
}

TEST(XLFOFreqController, WaitsWithTheLockWhileTheOffsetMoves)
{
    XLFOFixture fixture;
    fixture.rate.syncMode.assign(Mode::Notes1);
    const double begin = 100.1;
    fixture.playSong(begin, 10240);
    // To and fro for 0.4 beats: at 100 beats a factor of 1.1 is 2.5 cycles elsewhere.
    fixture.rate.offset.assign(1.1f);
    const double sweep = begin + 10240 * fixture.beatsPerSample();
    const auto out = fixture.playSong(sweep, 5120, 128);
    EXPECT_LT(signals::largestStep(out, 0, out.size()), 4.0 * 0.55 / 44100.0 + 1e-6);
    const double rest = sweep + 5120 * fixture.beatsPerSample();
    fixture.playSong(rest, 51200, 128);
    const double after = rest + 51200 * fixture.beatsPerSample();
    expectInSong(fixture, fixture.playSong(after, 5120), after, 0.25 * 1.1f, 1e-5);
}

TEST(XLFOFreqController, CountsFromANoteUntilOneThatTriggersNothing)
{
    XLFOFixture fixture;
    fixture.rate.syncMode.assign(Mode::Quarter);
    fixture.playSong(10.3, 20480);
    double beats = 10.3 + 20480 * fixture.beatsPerSample();
    fixture.playSong(beats, 256, 1024);  // a note in the midst of a block of the host
    beats += 256 * fixture.beatsPerSample();
    fixture.xlfo.retrigger();
    const double note = beats;
    const auto rest = fixture.render(fixture.xlfo, 768);
    EXPECT_EQ(rest[0], -1.0f);
    beats += 768 * fixture.beatsPerSample();
    auto out = fixture.playSong(beats, 40960);
    expectInSong(fixture, out, beats - note, 1.0, 1e-5);
    fixture.xlfo.countFromSongStart();
    beats += 40960 * fixture.beatsPerSample();
    expectInSong(fixture, fixture.playSong(beats, 5120), beats, 1.0, 1e-5);

    fixture.xlfo.retrigger();  // with the next block's position known already
    beats += 5120 * fixture.beatsPerSample();
    expectInSong(fixture, fixture.playSong(beats, 5120), 0.0, 1.0, 1e-5);
}

TEST(XLFOFreqController, CountsFromANoteThatComesWhileTheOffsetMoves)
{
    XLFOFixture fixture;
    fixture.rate.syncMode.assign(Mode::Quarter);
    double beats = 10.3;
    const auto play = [&](int samples) {
        fixture.playSong(beats, samples, 128);
        beats += samples * fixture.beatsPerSample();
    };
    play(20480);
    fixture.rate.offset.assign(1.3f);
    play(1280);
    fixture.xlfo.retrigger();
    const double note = beats;
    play(30720);
    const double cyclesSinceNote = (beats - note) * 1.3f;
    EXPECT_NEAR(fixture.playSong(beats, 128)[0], fixture.shape.at(cyclesSinceNote), ofPhase(1e-5));
}

TEST(XLFOFreqController, LocksToTheRightPlaceWhenChosenWithinAHostsBlock)
{
    XLFOFixture fixture;
    fixture.playSong(5.2, 1024, 4096);
    fixture.rate.syncMode.assign(Mode::Eighth);
    const double beats = 5.2 + 1024 * fixture.beatsPerSample();
    expectInSong(fixture, fixture.play(3072), beats, 2.0, 1e-5);
}

TEST(XLFOFreqController, ChangesTheLengthOfItsCycleWithTheHostsNextBlock)
{
    XLFOFixture fixture;
    fixture.rate.syncMode.assign(Mode::Quarter);
    fixture.playSong(3.0, 1024, 8192);
    fixture.rate.syncMode.assign(Mode::SixtyFourth);
    const double beats = 3.0 + 1024 * fixture.beatsPerSample();
    expectInSong(fixture, fixture.play(1024), beats, 1.0, 1e-5);
    // In place at once, while the rate is still on its way.
    EXPECT_NEAR(fixture.playSong(4.02, 1)[0], fixture.shape.at(4.02 * 16.0), ofPhase(1e-5));
}

TEST(XLFOFreqController, FindsItsPlaceAgainAfterAReset)
{
    XLFOFixture fixture;
    fixture.rate.syncMode.assign(Mode::Notes1);
    fixture.playSong(9.5, 128);
    fixture.environment.reset(wave::Environment::Reset::Enabled);
    expectInSong(fixture, fixture.playSong(9.5, 128), 9.5, 0.25, 1e-5);
}

TEST(XLFOFreqController, IgnoresATempoThatIsNoNumber)
{
    XLFOFixture fixture;
    fixture.rate.syncMode.assign(Mode::Notes1);
    fixture.playSong(0.0, 1024);
    fixture.rate.transportChanged(std::nanf(""), 3.0);
    const auto out = fixture.play(4096);
    EXPECT_NEAR(out[4095], fixture.shape.at(5119 * fixture.beatsPerSample() / 4.0), 1e-5);
}
