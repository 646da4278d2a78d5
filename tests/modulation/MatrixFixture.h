#pragma once

#include "modulation/ModulationController.h"
#include "support/GraphFixture.h"

#include <memory>
#include <vector>

/// A matrix with a few sources whose values a test sets, and one target of each sort.
struct MatrixFixture : GraphFixture {
    enum Source { Hor, Ver, FirstXLFO, SecondXLFO, Follower, Missing, SourceCount };
    enum Target { Gain, Time, Pan, FirstRate, SecondRate, FirstLevel };
    static constexpr int slots = 24;

    MatrixFixture()
    {
        using Kind = ModulationSource::Kind;
        configuration.firstSlotTarget = FirstLevel;
        configuration.slotCount = slots;
        configuration.sources = {
            {Kind::XY, {}}, {Kind::XY, {}},  {Kind::XLFO, {FirstRate}}, {Kind::XLFO, {SecondRate}},
            {Kind::EF, {}}, {Kind::Midi, {}}};
        configuration.ranges = {{0.0f, 1.0f, 1.0f, {{Kind::EF, 2.0f}}},
                                {5.0f, 5000.0f, 4995.0f, {{Kind::XLFO, 500.0f}, {Kind::SnappedXLFO, 50.0f}}},
                                {-1.0f, 1.0f, 2.0f, {}}};
        configuration.targetRanges = {0, 1, 2, 0, 0};
        configuration.targetRanges.insert(configuration.targetRanges.end(), slots, 0);
        matrix = std::make_unique<ModulationMatrix>(environment, configuration);
        for (int source = Hor; source < Missing; ++source) {
            signals.push_back(std::make_unique<FunctionProducer>(environment, [this, source](std::uint64_t) {
                return values[static_cast<std::size_t>(source)];
            }));
            matrix->setSource(source, signals.back().get());
        }
    }

    /// Connects a slot, from 0, with a level of 0..1.
    void connect(int slot, int source, int target, float level)
    {
        matrix->setSlotLevel(slot, level);
        matrix->setSlotSource(slot, source);
        matrix->setSlotTarget(slot, target);
    }
    void setSource(Source source, float value) { values[source] = value; }
    /// The last of some samples of a target, enough for every ramp to end.
    float settled(int target) { return render(target, 8000).back(); }
    std::vector<float> render(int target, int samples)
    {
        return GraphFixture::render(*matrix->producerForTarget(target), samples);
    }
    static int levelOf(int slot) { return FirstLevel + slot; }

    ModulationConfiguration configuration;
    std::unique_ptr<ModulationMatrix> matrix;
    std::vector<std::unique_ptr<FunctionProducer>> signals;
    float values[SourceCount] = {};
};
