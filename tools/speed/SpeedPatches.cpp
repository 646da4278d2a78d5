#include "speed/SpeedPatches.h"

#include <algorithm>
#include <array>
#include <span>

namespace {

constexpr int slots = 24;

/// Every signal of the path that sounds, and then levels of slots, each reached by a small amount.
constexpr std::array<const char*, slots> slotTargets{"Delay 1 Time",
                                                     "Delay 2 Time",
                                                     "Delay 1 Feedback",
                                                     "Delay 2 Feedback",
                                                     "Delay 1 Cross Feedback",
                                                     "Delay 2 Cross Feedback",
                                                     "Delay 1 Pan",
                                                     "Delay 2 Pan",
                                                     "Filter 1 Freq",
                                                     "Filter 2 Freq",
                                                     "Filter 1 Peak",
                                                     "Filter 2 Peak",
                                                     "Input Level",
                                                     "Dry Level",
                                                     "Dry Pan",
                                                     "Wet Level",
                                                     "Wet Pan",
                                                     "Slot 1 Level",
                                                     "Slot 2 Level",
                                                     "Slot 3 Level",
                                                     "Slot 4 Level",
                                                     "Slot 5 Level",
                                                     "Slot 6 Level",
                                                     "Slot 7 Level"};

constexpr std::array restingSources{"XY 1 Hor", "XY 1 Ver", "XY 2 Hor", "XY 2 Ver",
                                    "XY 3 Hor", "XY 3 Ver", "XY 4 Hor", "XY 4 Ver"};

/// By kind, so that a number of them holds the kinds in proportion.
constexpr std::array<const char*, slots> movingSources{
    "XLFO 1", "EG 1", "EF 1",   "MIDI 1", "XLFO 2", "EG 2", "EF 2",   "MIDI 2",
    "XLFO 3", "EG 3", "EF 3",   "MIDI 3", "XLFO 4", "EG 4", "EF 4",   "MIDI 4",
    "XLFO 5", "EG 5", "MIDI 5", "MIDI 6", "XLFO 6", "EG 6", "MIDI 7", "MIDI 8"};

constexpr int mostXlfos = 6;
constexpr int mostGenerators = 6;

/// No gain rests at 1, nor a pan in the middle: no part of the path has a short way.
SpeedSettings echoes()
{
    return {{"Input Level", "-1 dB"},
            {"Delay 1 Feedback", "0.3"},
            {"Delay 2 Feedback", "0.3"},
            {"Delay 1 Cross Feedback", "0.2"},
            {"Delay 2 Cross Feedback", "0.2"},
            {"Delay 1 Pan", "-0.5"},
            {"Delay 2 Pan", "0.5"},
            {"Wet Level", "-3 dB"},
            {"Wet Pan", "0.2"},
            {"Dry Level", "-3 dB"},
            {"Dry Pan", "-0.2"}};
}

SpeedSettings joined(std::initializer_list<SpeedSettings> parts)
{
    SpeedSettings all;
    for (const SpeedSettings& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

void connect(SpeedSettings& settings, int slot, const char* source, const char* target, const char* level)
{
    const std::string name = "Slot " + std::to_string(slot);
    settings.emplace_back(name + " Source", source);
    settings.emplace_back(name + " Target", target);
    settings.emplace_back(name + " Level", level);
}

SpeedSettings connected(std::span<const char* const> sources, int count)
{
    SpeedSettings settings{{"Num Active Slots", std::to_string(count)}};
    for (int slot = 0; slot < count; ++slot) {
        const auto at = static_cast<std::size_t>(slot);
        connect(settings, slot + 1, sources[at % sources.size()], slotTargets[at], "0.01");
    }
    return settings;
}

/// Eight gliding steps, at rates from slow to audible.
void setXlfo(SpeedSettings& settings, int number, const char* curve)
{
    const std::string xlfo = "XLFO " + std::to_string(number);
    settings.emplace_back(xlfo + " Frequency", std::to_string(number * number * number) + " Hz");
    settings.emplace_back("Num Active " + xlfo + " Steps", "8");
    for (int step = 1; step <= 8; ++step) {
        const std::string name = xlfo + " Step " + std::to_string(step);
        settings.emplace_back(name + " Value", step % 2 ? "0.7" : "-0.4");
        settings.emplace_back(name + " Glide", "0.6");
        settings.emplace_back(name + " Glide function", curve);
    }
}

/// Switches on as many of each kind as stand among `sources`, and gives them something to do.
void setSources(SpeedSettings& settings, std::span<const char* const> sources)
{
    const auto used = [&](const std::string& kind) {
        return std::to_string(std::count_if(sources.begin(), sources.end(), [&](const char* one) {
            return std::string(one).starts_with(kind);
        }));
    };
    settings.emplace_back("Num Active XLFOs", used("XLFO"));
    settings.emplace_back("Num Active EGs", used("EG"));
    settings.emplace_back("Num Active EFs", used("EF"));
    settings.emplace_back("Num Active MIDI Sources", used("MIDI"));
    for (int number = 1; number <= mostXlfos; ++number)
        setXlfo(settings, number, "Linear");
    for (int number = 1; number <= mostGenerators; ++number) {
        const std::string name = "EG " + std::to_string(number);
        settings.emplace_back(name + " Decay", "5 sec");
        settings.emplace_back(name + " Attack", "3 sec");
        settings.emplace_back(name + " Sustain", "0.5");
    }
}

/// What one source adds that moves a level.
SpeedSettings oneSource(const char* source)
{
    SpeedSettings settings = joined({echoes(), withoutFilters()});
    settings.emplace_back("Num Active Slots", "1");
    connect(settings, 1, source, "Wet Level", "0.01");
    setSources(settings, {&source, 1});
    return settings;
}

/// Two targets that a sine of 8 Hz moves all the time.
SpeedSettings swept(const char* first, const char* second, const char* level)
{
    SpeedSettings settings{{"Num Active XLFOs", "2"}, {"Num Active Slots", "2"}};
    setXlfo(settings, 2, "Sine");
    connect(settings, 1, "XLFO 2", first, level);
    connect(settings, 2, "XLFO 2", second, level);
    return settings;
}

SpeedSettings allSources() { return sourcesInUse(slots); }

SpeedSettings filtersOn() { return {{"Filter 1 Enabled", "Enabled"}, {"Filter 2 Enabled", "Enabled"}}; }

}  // namespace

SpeedSettings withoutFilters()
{
    return {{"Filter 1 Enabled", "Disabled"}, {"Filter 2 Enabled", "Disabled"}};
}

SpeedSettings slotsInUse(int count)
{
    SpeedSettings settings = joined({echoes(), withoutFilters(), connected(restingSources, count)});
    settings.emplace_back("Num Active XY Controllers", "4");
    for (int controller = 1; controller <= 4; ++controller) {
        settings.emplace_back("XY Controller " + std::to_string(controller) + " Hor", "0.1");
        settings.emplace_back("XY Controller " + std::to_string(controller) + " Ver", "-0.1");
    }
    return settings;
}

SpeedSettings sourcesInUse(int count)
{
    SpeedSettings settings = joined({echoes(), withoutFilters(), connected(movingSources, count)});
    setSources(settings, {movingSources.data(), static_cast<std::size_t>(count)});
    return settings;
}

std::vector<SpeedPatch> speedPatches()
{
    const SpeedSettings closed = {{"Filter 1 Freq", "2 kHz"}, {"Filter 2 Freq", "500 Hz"}};
    const SpeedSettings steep = {{"Filter 1 Slope", "48"}, {"Filter 2 Slope", "48"}};
    const SpeedSettings stretch = {{"Delay Buffer Read Style", "Stretch"}};
    const SpeedSettings times = swept("Delay 1 Time", "Delay 2 Time", "0.05");
    const SpeedSettings cutoffs = swept("Filter 1 Freq", "Filter 2 Freq", "0.2");
    return {{"default, both filters on", {}},
            {"default, filters off", withoutFilters()},
            {"both filters closed, at rest", closed},
            {"both filters swept", joined({closed, cutoffs})},
            {"both filters at 48 dB", joined({closed, steep})},
            {"feedback and pans, filters off", joined({echoes(), withoutFilters()})},
            {"frozen, filters off", joined({echoes(), withoutFilters()}), {{"Delay Freeze", "On"}}},
            {"times swept, Tape, filters off", joined({withoutFilters(), times})},
            {"times swept, Stretch, filters off", joined({withoutFilters(), times, stretch})},
            {"one step LFO on a level, filters off", oneSource("XLFO 1")},
            {"one envelope generator, filters off", oneSource("EG 1")},
            {"one envelope follower, filters off", oneSource("EF 1")},
            {"one MIDI source, filters off", oneSource("MIDI 1")},
            {"24 slots from XY, filters off", slotsInUse(slots)},
            {"24 slots from XY", joined({slotsInUse(slots), filtersOn()})},
            {"all kinds of sources in 24 slots, filters off", allSources()},
            {"all kinds of sources in 24 slots", joined({allSources(), filtersOn()})}};
}
