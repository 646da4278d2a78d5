#include "product/SordelinModulation.h"

#include "parameters/ItemList.h"
#include "product/SordelinModulationIds.h"

#include <gtest/gtest.h>

namespace {

constexpr auto XY = ModulationSource::XY;
constexpr auto XLFO = ModulationSource::XLFO;
constexpr auto EG = ModulationSource::EG;
constexpr auto EF = ModulationSource::EF;
constexpr auto Midi = ModulationSource::Midi;
constexpr auto Snapped = ModulationSource::SnappedXLFO;

TEST(SordelinModulation, EverySourceHasAKindAndItsOwnTargets)
{
    struct Row {
        int source;
        ModulationSource::Kind kind;
        std::vector<int> ownTargets;
    };
    const Row rows[] = {
        {0, XY, {}},
        {7, XY, {}},
        {8, XLFO, {16, 17, 18}},
        {13, XLFO, {31, 32, 33}},
        {14, EG, {34, 35, 36, 37, 38, 39}},
        {19, EG, {64, 65, 66, 67, 68, 69}},
        {20, EF, {70, 71}},
        {23, EF, {76, 77}},
        {24, Midi, {}},
        {33, Midi, {}},
    };
    const ModulationConfiguration configuration = sordelinModulation();
    ASSERT_EQ(configuration.sources.size(), 34u);
    for (const auto& [source, kind, ownTargets] : rows) {
        const ModulationSource& made = configuration.sources[static_cast<std::size_t>(source)];
        EXPECT_EQ(made.kind, kind) << source;
        EXPECT_EQ(made.ownTargets, ownTargets) << source;
    }
}

/// The depths per kind of source, in the order XY, XLFO, EG, EF, MIDI, XLFO with Snap.
struct TargetRow {
    std::vector<int> targets;
    float lower;
    float upper;
    float depths[6];
};

const TargetRow targetRows[] = {
    {{2, 7, 12, 15, 38, 44, 50, 56, 62, 68, 79, 81, 83, 106}, 0, 1, {1, 1, 1, 2, 1, 1}},
    {{0, 5}, 5, 5000, {4995, 500, 1000, 2000, 4995, 4995}},
    {{1, 6}, -0.5f, 2, {1, 0.5f, 1, 2, 1, 1}},
    {{3, 8}, 0, 2, {2, 2, 2, 4, 2, 2}},
    {{10, 13}, 2.2666f, 16.2064f, {10, 4.2f, 10, 20, 10, 1}},
    {{11, 14}, -3.5f, 3.5f, {7, 7, 7, 14, 7, 7}},
    {{16, 31}, 0.02f, 500, {25, 25, 25, 50, 25, 25}},
    {{17, 32}, -1, 1, {2, 2, 2, 4, 2, 2}},
    {{18, 33}, -100, 100, {6.25f, 6.25f, 6.25f, 12.5f, 6.25f, 6.25f}},
    {{34, 64}, 0, 19, {9.5f, 9.5f, 9.5f, 19, 9.5f, 9.5f}},
    {{35, 65}, 0, 5, {2.5f, 2.5f, 2.5f, 5, 2.5f, 2.5f}},
    {{36, 66}, 0.0014512470f, 3, {1.5f, 1.5f, 1.5f, 3, 1.5f, 1.5f}},
    {{37, 67, 39, 69}, 0.0014512470f, 5, {2.5f, 2.5f, 2.5f, 5, 2.5f, 2.5f}},
    {{70, 76}, 0.001f, 1, {0.4995f, 0.4995f, 0.4995f, 0.999f, 0.4995f, 0.4995f}},
    {{71, 77}, 0.05f, 5, {2.475f, 2.475f, 2.475f, 4.95f, 2.475f, 2.475f}},
    {{4, 9, 80, 82}, -1, 1, {2, 2, 2, 4, 2, 2}},
    {{78},
     0.015848933f,
     63.095734f,
     {63.079887f, 63.079887f, 63.079887f, 63.079887f, 63.079887f, 63.079887f}},
};

TEST(SordelinModulation, EveryTargetHasItsRangeAndDepths)
{
    const ModulationConfiguration configuration = sordelinModulation();
    EXPECT_EQ(configuration.targetCount(), 107);
    EXPECT_EQ(configuration.ranges.size(), 18u);
    EXPECT_EQ(configuration.firstSlotTarget, 83);
    EXPECT_EQ(configuration.slotCount, 24);
    for (const auto& [targets, lower, upper, depths] : targetRows)
        for (const int target : targets) {
            const ModulationRange& range = configuration.rangeOf(target);
            EXPECT_EQ(range.lower, lower) << target;
            EXPECT_EQ(range.upper, upper) << target;
            const ModulationSource::Kind kinds[] = {XY, XLFO, EG, EF, Midi, Snapped};
            for (int i = 0; i < 6; ++i)
                EXPECT_EQ(range.depthFor(kinds[i]), depths[i]) << "target " << target << " kind " << i;
        }
}

TEST(SordelinModulation, NamesStandAtTheirIds)
{
    const ItemList sources(sordelinSourceNames());
    const ItemList targets(sordelinTargetNames());
    ASSERT_EQ(sources.names().size(), 34u);
    ASSERT_EQ(targets.names().size(), 107u);
    struct Row {
        const ItemList& list;
        std::size_t id;
        const char* name;
    };
    const Row rows[] = {
        {sources, 0, "XY 1 Hor"},
        {sources, 7, "XY 4 Ver"},
        {sources, 8, "XLFO 1"},
        {sources, 14, "EG 1"},
        {sources, 20, "EF 1"},
        {sources, 24, "MIDI 1"},
        {sources, 33, "MIDI 10"},
        {targets, 0, "Delay 1 Time"},
        {targets, 8, "Delay 2 Cross Feedback"},
        {targets, 10, "Filter 1 Freq"},
        {targets, 15, "Filter 2 Peak"},
        {targets, 16, "XLFO 1 Freq"},
        {targets, 33, "XLFO 6 Phase Offset"},
        {targets, 34, "EG 1 Hold"},
        {targets, 38, "EG 1 Sustain"},
        {targets, 71, "EF 1 Release"},
        {targets, 78, "Input Level"},
        {targets, 82, "Wet Pan"},
        {targets, 83, "Slot 1 Level"},
        {targets, 106, "Slot 24 Level"},
    };
    for (const auto& [list, id, name] : rows)
        EXPECT_EQ(list.names()[id], name) << id;
}

}  // namespace
