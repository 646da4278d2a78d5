#include "product/SordelinModulation.h"

#include "product/SordelinModulationIds.h"

#include <initializer_list>
#include <string_view>

namespace {

using T = SordelinTargets;
using S = SordelinSources;
using L = SordelinLimits;

/// The places of the ranges in the configuration.
enum Range {
    LevelRange,
    DelayTimeRange,
    DelayOffsetRange,
    CrossFeedbackRange,
    FilterFrequencyRange,
    FilterPanRange,
    XLFOFrequencyRange,
    XLFOGlideRange,
    XLFOPhaseRange,
    EGHoldRange,
    EGDelayRange,
    EGAttackRange,
    EGDecayRange,
    EGReleaseRange,
    EFAttackRange,
    EFReleaseRange,
    PanRange,
    InputLevelRange
};

// An envelope reads its times every 64 samples: at 44.1 kHz no stage is shorter than that, in seconds.
constexpr float shortestStage = 0.0014512470f;

std::vector<ModulationRange> makeRanges()
{
    using enum ModulationSource::Kind;
    // Lower and upper end of the signal, depth, depths by the kind of source; in the order of `Range`.
    return {
        {0.0f, 1.0f, 1.0f, {{EF, 2.0f}}},
        {5.0f, 5000.0f, 4995.0f, {{XLFO, 500.0f}, {EG, 1000.0f}, {EF, 2000.0f}}},
        {-0.5f, 2.0f, 1.0f, {{XLFO, 0.5f}, {EF, 2.0f}}},
        {0.0f, 2.0f, 2.0f, {{EF, 4.0f}}},
        {2.2666f, 16.2064f, 10.0f, {{XLFO, 4.2f}, {SnappedXLFO, 1.0f}, {EF, 20.0f}}},  // log2 of Hz
        {-3.5f, 3.5f, 7.0f, {{EF, 14.0f}}},
        {0.02f, 500.0f, 25.0f, {{EF, 50.0f}}},
        {-1.0f, 1.0f, 2.0f, {{EF, 4.0f}}},
        // A slot at half of its knob, which is a level of 0.16, shifts the phase by one cycle.
        {-100.0f, 100.0f, 6.25f, {{EF, 12.5f}}},
        {0.0f, 19.0f, 9.5f, {{EF, 19.0f}}},
        {0.0f, 5.0f, 2.5f, {{EF, 5.0f}}},
        {shortestStage, 3.0f, 1.5f, {{EF, 3.0f}}},
        {shortestStage, 5.0f, 2.5f, {{EF, 5.0f}}},
        {shortestStage, 5.0f, 2.5f, {{EF, 5.0f}}},
        {0.001f, 1.0f, 0.4995f, {{EF, 0.999f}}},
        {0.05f, 5.0f, 2.475f, {{EF, 4.95f}}},
        {-1.0f, 1.0f, 2.0f, {{EF, 4.0f}}},
        {0.015848933f, 63.095734f, 63.079887f, {}},  // -36 to 36 dB
    };
}

/// Appends the ranges of a thing's targets, as many times as there are such things.
void addTargets(std::vector<int>& ranges, int things, std::initializer_list<int> rangesOfOne)
{
    for (int i = 0; i < things; ++i)
        ranges.insert(ranges.end(), rangesOfOne);
}

std::vector<int> makeTargetRanges()
{
    std::vector<int> ranges;
    ranges.reserve(T::count);
    addTargets(ranges, L::delays,
               {DelayTimeRange, DelayOffsetRange, LevelRange, CrossFeedbackRange, PanRange});
    addTargets(ranges, L::filters, {FilterFrequencyRange, FilterPanRange, LevelRange});
    addTargets(ranges, L::xlfos, {XLFOFrequencyRange, XLFOGlideRange, XLFOPhaseRange});
    addTargets(ranges, L::envelopeGenerators,
               {EGHoldRange, EGDelayRange, EGAttackRange, EGDecayRange, LevelRange, EGReleaseRange});
    addTargets(ranges, L::envelopeFollowers, {EFAttackRange, EFReleaseRange});
    addTargets(ranges, 1, {InputLevelRange, LevelRange, PanRange, LevelRange, PanRange});
    addTargets(ranges, L::slots, {LevelRange});
    return ranges;
}

/// Appends sources with consecutive own targets, from `firstTarget` on.
void addSources(std::vector<ModulationSource>& sources, ModulationSource::Kind kind, int count,
                int firstTarget, int targetsPerSource)
{
    for (int i = 0; i < count; ++i) {
        ModulationSource& source = sources.emplace_back();
        source.kind = kind;
        for (int k = 0; k < targetsPerSource; ++k)
            source.ownTargets.push_back(firstTarget + i * targetsPerSource + k);
    }
}

std::vector<ModulationSource> makeSources()
{
    std::vector<ModulationSource> sources;
    sources.reserve(S::count);
    addSources(sources, ModulationSource::XY, S::firstXlfo, 0, 0);
    addSources(sources, ModulationSource::XLFO, L::xlfos, T::firstXlfo, 3);
    addSources(sources, ModulationSource::EG, L::envelopeGenerators, T::firstGenerator, 6);
    addSources(sources, ModulationSource::EF, L::envelopeFollowers, T::firstFollower, 2);
    addSources(sources, ModulationSource::Midi, L::midiSources, 0, 0);
    return sources;
}

/// Appends "<thing> 1<name>", for each of the things and each of the names.
void addNames(std::string& list, std::string_view thing, int count,
              std::initializer_list<std::string_view> names)
{
    for (int i = 1; i <= count; ++i) {
        const std::string numbered = std::string(thing) + " " + std::to_string(i);
        for (const std::string_view name : names) {
            if (!list.empty())
                list += ',';
            list.append(numbered).append(name);
        }
    }
}

}  // namespace

ModulationConfiguration sordelinModulation()
{
    ModulationConfiguration configuration;
    configuration.firstSlotTarget = T::firstSlot;
    configuration.slotCount = L::slots;
    configuration.sources = makeSources();
    configuration.ranges = makeRanges();
    configuration.targetRanges = makeTargetRanges();
    return configuration;
}

std::string sordelinSourceNames()
{
    std::string list;
    addNames(list, "XY", L::xyControllers, {" Hor", " Ver"});
    addNames(list, "XLFO", L::xlfos, {""});
    addNames(list, "EG", L::envelopeGenerators, {""});
    addNames(list, "EF", L::envelopeFollowers, {""});
    addNames(list, "MIDI", L::midiSources, {""});
    return list;
}

std::string sordelinTargetNames()
{
    std::string list;
    addNames(list, "Delay", L::delays, {" Time", " Offset", " Feedback", " Cross Feedback", " Pan"});
    addNames(list, "Filter", L::filters, {" Freq", " Pan", " Peak"});
    addNames(list, "XLFO", L::xlfos, {" Freq", " Glide", " Phase Offset"});
    addNames(list, "EG", L::envelopeGenerators,
             {" Hold", " Delay", " Attack", " Decay", " Sustain", " Release"});
    addNames(list, "EF", L::envelopeFollowers, {" Attack", " Release"});
    list += ",Input Level,Dry Level,Dry Pan,Wet Level,Wet Pan";
    addNames(list, "Slot", L::slots, {" Level"});
    return list;
}
