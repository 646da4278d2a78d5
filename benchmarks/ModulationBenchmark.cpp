// What the matrix costs: the built module with all slots in use beside the same patch without them.
#include "PluginPatch.h"

#include <string>

namespace {

// No gain rests at 1, nor a pan in the middle: neither patch has a short way that the other lacks.
const PluginPatch::Settings echoes = {{"Input Level", "-1 dB"},
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

const PluginPatch::Settings withoutFilters = {{"Filter 1 Enabled", "Disabled"},
                                              {"Filter 2 Enabled", "Disabled"}};

/// Every signal of the path that sounds, and then levels of slots, each reached by a small amount.
const char* const slotTargets[] = {"Delay 1 Time",
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

/// One slot after another from the sources, in turn.
template <std::size_t count>
void connectAll(PluginPatch::Settings& settings, const char* const (&sources)[count])
{
    settings.emplace_back("Num Active Slots", "24");
    for (std::size_t slot = 0; slot < std::size(slotTargets); ++slot) {
        const std::string name = "Slot " + std::to_string(slot + 1);
        settings.emplace_back(name + " Source", sources[slot % count]);
        settings.emplace_back(name + " Target", slotTargets[slot]);
        settings.emplace_back(name + " Level", "0.01");
    }
}

PluginPatch::Settings allSlots()
{
    const char* const axes[] = {"XY 1 Hor", "XY 1 Ver", "XY 2 Hor", "XY 2 Ver",
                                "XY 3 Hor", "XY 3 Ver", "XY 4 Hor", "XY 4 Ver"};
    PluginPatch::Settings settings = {{"Num Active XY Controllers", "4"}};
    connectAll(settings, axes);
    for (int controller = 1; controller <= 4; ++controller) {
        settings.emplace_back("XY Controller " + std::to_string(controller) + " Hor", "0.1");
        settings.emplace_back("XY Controller " + std::to_string(controller) + " Ver", "-0.1");
    }
    return settings;
}

/// Six XLFOs of eight gliding steps, each on one signal of the path, at rates from slow to audible.
PluginPatch::Settings sixXlfos(const char* curve)
{
    const char* const targets[] = {"Delay 1 Pan", "Delay 2 Pan", "Dry Level",
                                   "Dry Pan",     "Wet Level",   "Wet Pan"};
    PluginPatch::Settings settings = {{"Num Active XLFOs", "6"}, {"Num Active Slots", "6"}};
    for (int i = 1; i <= 6; ++i) {
        const std::string xlfo = "XLFO " + std::to_string(i);
        settings.emplace_back(xlfo + " Frequency", std::to_string(i * i * i) + " Hz");
        settings.emplace_back("Num Active " + xlfo + " Steps", "8");
        for (int step = 1; step <= 8; ++step) {
            const std::string name = xlfo + " Step " + std::to_string(step);
            settings.emplace_back(name + " Value", step % 2 ? "0.7" : "-0.4");
            settings.emplace_back(name + " Glide", "0.6");
            settings.emplace_back(name + " Glide function", curve);
        }
        const std::string slot = "Slot " + std::to_string(i);
        settings.emplace_back(slot + " Source", xlfo);
        settings.emplace_back(slot + " Target", targets[i - 1]);
        settings.emplace_back(slot + " Level", "0.1");
    }
    return settings;
}

/// All envelopes in use; the input opens the generators and keeps the followers moving.
PluginPatch::Settings allEnvelopes()
{
    PluginPatch::Settings settings = {
        {"Num Active EGs", "6"}, {"Num Active EFs", "4"}, {"Num Active MIDI Sources", "10"}};
    for (int generator = 1; generator <= 6; ++generator) {
        const std::string name = "EG " + std::to_string(generator);
        settings.emplace_back(name + " Decay", "5 sec");
        settings.emplace_back(name + " Attack", "3 sec");
        settings.emplace_back(name + " Sustain", "0.5");
    }
    return settings;
}

/// Every source but the XY controllers, all moving, in all slots.
PluginPatch::Settings allSources()
{
    const char* const sources[] = {"XLFO 1", "XLFO 2", "XLFO 3", "XLFO 4", "XLFO 5", "XLFO 6",
                                   "EG 1",   "EG 2",   "EG 3",   "EG 4",   "EG 5",   "EG 6",
                                   "EF 1",   "EF 2",   "EF 3",   "EF 4",   "MIDI 1", "MIDI 2",
                                   "MIDI 3", "MIDI 4", "MIDI 5", "MIDI 6", "MIDI 7", "MIDI 8"};
    PluginPatch::Settings settings = sixXlfos("Linear");
    for (const auto& setting : allEnvelopes())
        settings.push_back(setting);
    connectAll(settings, sources);
    return settings;
}

void playPatch(benchmark::State& state, std::initializer_list<PluginPatch::Settings> parts)
{
    PluginPatch::Settings settings;
    for (const PluginPatch::Settings& part : parts)
        settings.insert(settings.end(), part.begin(), part.end());
    PluginPatch patch(settings);
    patch.measure(state);
}

void withoutSlots(benchmark::State& state) { playPatch(state, {echoes, withoutFilters}); }
BENCHMARK(withoutSlots)->Name("matrix, no slot, filters off");

void withSlots(benchmark::State& state) { playPatch(state, {echoes, withoutFilters, allSlots()}); }
BENCHMARK(withSlots)->Name("matrix, 24 slots from XY, filters off");

void withXlfos(benchmark::State& state) { playPatch(state, {echoes, withoutFilters, sixXlfos("Linear")}); }
BENCHMARK(withXlfos)->Name("matrix, six XLFOs, filters off");

void withSineXlfos(benchmark::State& state) { playPatch(state, {echoes, withoutFilters, sixXlfos("Sine")}); }
BENCHMARK(withSineXlfos)->Name("matrix, six XLFOs gliding on sines, filters off");

void filteredWithoutSlots(benchmark::State& state) { playPatch(state, {echoes}); }
BENCHMARK(filteredWithoutSlots)->Name("matrix, no slot, filters on");

void filteredWithSlots(benchmark::State& state) { playPatch(state, {echoes, allSlots()}); }
BENCHMARK(filteredWithSlots)->Name("matrix, 24 slots from XY, filters on");

void withEnvelopes(benchmark::State& state) { playPatch(state, {echoes, withoutFilters, allEnvelopes()}); }
BENCHMARK(withEnvelopes)->Name("6 EGs, 4 EFs and 10 MIDI sources, no slot, filters off");

void withAllSources(benchmark::State& state) { playPatch(state, {echoes, withoutFilters, allSources()}); }
BENCHMARK(withAllSources)->Name("matrix, 24 slots from all kinds of sources, filters off");

void filteredWithAllSources(benchmark::State& state) { playPatch(state, {echoes, allSources()}); }
BENCHMARK(filteredWithAllSources)->Name("matrix, 24 slots from all kinds of sources, filters on");

}  // namespace
