// Instances that play in turn on one thread, as tracks of a song do, share memory for their work. None may
// hear that.
#include "PluginPlayer.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

namespace {

using Settings = std::vector<std::pair<std::string, std::string>>;

constexpr std::size_t length = 72000;  // frames

struct Patch {
    const char* name;
    Settings settings;
    unsigned moves;  // seed of a restless hand on all knobs; 0: nobody touches them
};

/// Everything that keeps something from sub-block to sub-block takes part in one of them, at rest or busy.
const std::vector<Patch>& patches()
{
    static const std::vector<Patch> all = {
        {"plain", {}, 0},
        {"tape with filters",
         {{"Delay Buffer Read Style", "Tape"},
          {"Delay 1 Feedback", "0.7"},
          {"Delay 2 Cross Feedback", "0.5"},
          {"Filter 1 Enabled", "Enabled"},
          {"Filter 1 Freq", "600 Hz"},
          {"Filter 1 Peak", "0.6"},
          {"Filter 1 Characteristic", "Tube"},
          {"Filter 2 Enabled", "Enabled"},
          {"Filter 2 Response", "HP"},
          {"Filter 2 Slope", "48"},
          {"Slot 1 Source", "XLFO 1"},
          {"Slot 1 Target", "Delay 1 Time"},
          {"Slot 1 Level", "0.1"},
          {"Slot 2 Source", "XLFO 1"},
          {"Slot 2 Target", "Filter 1 Freq"},
          {"Slot 2 Level", "0.4"}},
         0},
        {"stretch without filters, turned at",
         {{"Delay Buffer Read Style", "Stretch"},
          {"Filter 1 Enabled", "Disabled"},
          {"Filter 2 Enabled", "Disabled"},
          {"Channel Mode", "Mid/Side"},
          {"Delay 1 Feedback", "0.8"},
          {"Slot 1 Source", "EF 1"},
          {"Slot 1 Target", "Wet Pan"},
          {"Slot 1 Level", "0.8"}},
         11},
        {"frozen, turned at",
         {{"Delay Freeze", "On"}, {"Filter 1 Slope", "12"}, {"Auto Mute Self-Osc", "On"}},
         12},
        {"everything on, turned at",
         {{"Filter 1 Enabled", "Enabled"},
          {"Filter 1 Pan", "0.5"},
          {"Slot 1 Source", "EG 1"},
          {"Slot 1 Target", "Slot 2 Level"},
          {"Slot 1 Level", "0.5"},
          {"Slot 2 Source", "XY 1 Hor"},
          {"Slot 2 Target", "Dry Level"},
          {"Slot 2 Level", "0.3"}},
         13}};
    return all;
}

/// An instance with its own input and its own cutting into blocks.
class Track : public PluginPlayer {
public:
    Track(const Patch& patch, std::size_t firstCut)
        : PluginPlayer({.block = 1000, .tempo = 120.0}), nextCut(firstCut), input(makeInput())
    {
        set("Num Active Slots", "24");
        set("Num Active XLFOs", "4");
        set("Num Active XY Controllers", "4");
        set("Num Active EGs", "2");
        set("Num Active EFs", "2");
        for (const auto& [parameter, text] : patch.settings)
            set(parameter, text);
        sideChain = {input.second.data(), input.first.data()};
        std::vector<TimedEvent> planned = {{3001, midiEvent(0, 0x90, 60, 100)},
                                           {30011, midiEvent(0, 0x80, 60, 0)},
                                           {40003, midiEvent(0, 0xB0, 1, 77)}};
        if (patch.moves != 0)
            turnKnobs(patch.moves, planned);
        schedule(planned);
    }

    bool isOver() const { return out.first.size() >= length; }
    void playBlock()
    {
        constexpr std::size_t cuts[] = {128, 1, 1000, 5, 64, 333, 5, 128, 128, 700};
        const std::size_t at = out.first.size() % length;  // a companion starts its input over
        const std::size_t frames = std::min(cuts[nextCut++ % std::size(cuts)], length - at);
        const auto part = [&](const std::vector<float>& all) {
            const auto begin = all.begin() + static_cast<std::ptrdiff_t>(at);
            return std::vector<float>(begin, begin + static_cast<std::ptrdiff_t>(frames));
        };
        const Stereo played = play(part(input.first), part(input.second));
        out.first.insert(out.first.end(), played.first.begin(), played.first.end());
        out.second.insert(out.second.end(), played.second.begin(), played.second.end());
    }

    Stereo out;

private:
    /// Bursts of noise with silence after them, for those that come to rest.
    static Stereo makeInput()
    {
        Stereo made{signals::noise(length, 1), signals::noise(length, 2)};
        for (std::size_t i = 0; i < length; ++i) {
            if (i % 24000 > 9000)
                made.first[i] = made.second[i] = 0.0f;
        }
        return made;
    }

    /// Any parameter to any value, but for those that are by chance or make everything still.
    void turnKnobs(unsigned seed, std::vector<TimedEvent>& planned)
    {
        std::mt19937 chance(seed);
        std::vector<const ClapParameter*> turned;
        for (const ClapParameter& parameter : instance.parameters().list()) {
            const auto isNamed = [&](const char* part) {
                return parameter.name.find(part) != std::string::npos;
            };
            if (!isNamed("Random") && !isNamed("Num Active") && !isNamed("Wet Level") &&
                !(parameter.flags & CLAP_PARAM_IS_BYPASS))
                turned.push_back(&parameter);
        }
        for (std::int64_t frame = 0; frame < static_cast<std::int64_t>(length); frame += 97) {
            const ClapParameter& parameter = *turned[chance() % turned.size()];
            const double part = static_cast<double>(chance() % 1001) / 1000.0;
            const double value = parameter.minimum + part * (parameter.maximum - parameter.minimum);
            planned.push_back({frame, parameterEvent(0, parameter.id, value)});
        }
    }

    std::size_t nextCut;
    Stereo input;
};

PluginPlayer::Stereo playedAlone(const Patch& patch)
{
    Track track(patch, 0);
    while (!track.isOver())
        track.playBlock();
    return track.out;
}

/// The second companion comes a third into the song and goes after two.
PluginPlayer::Stereo playedAmong(const Patch& patch, const Patch& first, const Patch& second)
{
    Track track(patch, 0);
    Track companion(first, 3);
    std::unique_ptr<Track> guest;
    while (!track.isOver()) {
        track.playBlock();
        companion.playBlock();
        const std::size_t at = track.out.first.size();
        if (at < length / 3 || at > length / 3 * 2)
            guest.reset();
        else if (!guest)
            guest = std::make_unique<Track>(second, 6);
        if (guest)
            guest->playBlock();
    }
    return track.out;
}

/// The first frame that differs or is no number, or the length.
std::size_t firstDifference(const std::vector<float>& a, const std::vector<float>& b)
{
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
}

}  // namespace

TEST(SharedThread, InstancesThatPlayInTurnDontHearEachOther)
{
    const std::size_t count = patches().size();
    for (std::size_t i = 0; i < count; ++i) {
        const Patch& patch = patches()[i];
        const Patch& first = patches()[(i + 1) % count];
        const Patch& second = patches()[(i + 3) % count];
        const PluginPlayer::Stereo alone = playedAlone(patch);
        EXPECT_GT(signals::rms(alone.first, length / 3, length), 0.01) << patch.name;
        const PluginPlayer::Stereo among = playedAmong(patch, first, second);
        EXPECT_EQ(firstDifference(alone.first, among.first), length) << patch.name;
        EXPECT_EQ(firstDifference(alone.second, among.second), length) << patch.name;
    }
}
