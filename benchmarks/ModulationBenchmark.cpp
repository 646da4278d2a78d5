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
PluginPatch::Settings allSlots()
{
    const char* const targets[] = {"Delay 1 Time",
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
    const char* const axes[] = {"XY 1 Hor", "XY 1 Ver", "XY 2 Hor", "XY 2 Ver",
                                "XY 3 Hor", "XY 3 Ver", "XY 4 Hor", "XY 4 Ver"};
    PluginPatch::Settings settings = {{"Num Active XY Controllers", "4"}, {"Num Active Slots", "24"}};
    for (std::size_t slot = 0; slot < std::size(targets); ++slot) {
        const std::string name = "Slot " + std::to_string(slot + 1);
        settings.emplace_back(name + " Source", axes[slot % std::size(axes)]);
        settings.emplace_back(name + " Target", targets[slot]);
        settings.emplace_back(name + " Level", "0.01");
    }
    for (int controller = 1; controller <= 4; ++controller) {
        settings.emplace_back("XY Controller " + std::to_string(controller) + " Hor", "0.1");
        settings.emplace_back("XY Controller " + std::to_string(controller) + " Ver", "-0.1");
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

void filteredWithoutSlots(benchmark::State& state) { playPatch(state, {echoes}); }
BENCHMARK(filteredWithoutSlots)->Name("matrix, no slot, filters on");

void filteredWithSlots(benchmark::State& state) { playPatch(state, {echoes, allSlots()}); }
BENCHMARK(filteredWithSlots)->Name("matrix, 24 slots from XY, filters on");

void withEnvelopes(benchmark::State& state) { playPatch(state, {echoes, withoutFilters, allEnvelopes()}); }
BENCHMARK(withEnvelopes)->Name("6 EGs, 4 EFs and 10 MIDI sources, no slot, filters off");

}  // namespace
