#include "modulation/ModMatrixParamController.h"
#include "modulation/SlotOperations.h"
#include "product/SordelinModulation.h"
#include "product/SordelinParameters.h"
#include "support/GraphFixture.h"
#include "support/RecordingOwner.h"

#include <gtest/gtest.h>

namespace {

struct Tree {
    Tree() { parameters.initialise(); }

    /// Connects the next slot by the names of its ends.
    void connect(const std::string& source, const std::string& target)
    {
        ModulationSlotParameterSet& slot = parameters.slots[modulation.slotController().findFreeSlot()];
        slot.source.setValue(slot.source.parseText(source).value(), announceChange);
        slot.target.setValue(slot.target.parseText(target).value(), announceChange);
    }
    /// The slots in use, as "source > target".
    std::vector<std::string> connections()
    {
        std::vector<std::string> all;
        for (int i = 0; i < parameters.slots.numActive.value(); ++i) {
            const ModulationSlotParameterSet& slot = parameters.slots[i];
            all.push_back(slot.source.valueText(slot.source.currentValue()) + " > " +
                          slot.target.valueText(slot.target.currentValue()));
        }
        return all;
    }

    RecordingOwner owner;
    ModulationMatrixOwner modulation;
    SordelinParameters parameters{owner, modulation};
};

using Names = std::vector<std::string>;

}  // namespace

TEST(SordelinSlots, GoAndFollowWhenASourceIsRemoved)
{
    Tree tree;
    for (AbstractParameterSetList* list : std::initializer_list<AbstractParameterSetList*>{
             &tree.parameters.xyControllers, &tree.parameters.xlfos, &tree.parameters.envelopeFollowers,
             &tree.parameters.midiSources})
        list->numActive.setValue(3.0f, announceChange);
    tree.parameters.xlfos[1].frequency.setValue(0.75f, announceChange);
    tree.connect("XLFO 1", "Delay 1 Time");
    tree.connect("XLFO 2", "XLFO 3 Freq");
    tree.connect("XY 1 Ver", "XLFO 1 Glide");  // on a parameter of what goes
    tree.connect("XLFO 3", "XLFO 2 Phase Offset");
    tree.connect("EF 1", "Slot 1 Level");
    tree.connect("MIDI 1", "Slot 4 Level");
    tree.connect("XY 2 Hor", "EF 1 Attack");
    tree.owner.changedOutsideBracket = false;

    tree.parameters.xlfos.removeSet(0);
    EXPECT_EQ(tree.connections(), (Names{"XLFO 1 > XLFO 2 Freq", "XLFO 2 > XLFO 1 Phase Offset",
                                         "MIDI 1 > Slot 2 Level", "XY 2 Hor > EF 1 Attack"}));
    EXPECT_EQ(tree.parameters.xlfos.numActive.value(), 2);
    EXPECT_EQ(tree.parameters.xlfos[0].frequency.currentValue(), 0.75f);
    EXPECT_FALSE(tree.owner.changedOutsideBracket);

    tree.parameters.xyControllers.removeSet(0);  // two axes at once
    EXPECT_EQ(tree.connections().back(), "XY 1 Hor > EF 1 Attack");
    tree.parameters.envelopeFollowers.removeSet(0);
    EXPECT_EQ(tree.connections(),
              (Names{"XLFO 1 > XLFO 2 Freq", "XLFO 2 > XLFO 1 Phase Offset", "MIDI 1 > Slot 2 Level"}));
    tree.parameters.midiSources.removeSet(2);
    EXPECT_EQ(tree.connections().back(), "MIDI 1 > Slot 2 Level");
    tree.parameters.midiSources.removeSet(5);  // not in use
    EXPECT_EQ(tree.parameters.midiSources.numActive.value(), 2);
}

TEST(SordelinSlots, LetSourcesBeTrimmedThatNoneUses)
{
    Tree tree;
    tree.parameters.xyControllers.numActive.setValue(4.0f, announceChange);
    tree.connect("XY 2 Ver", "Dry Level");
    tree.connect("XY 4 Hor", "Wet Level");
    tree.parameters.xyControllers.trim();
    EXPECT_EQ(tree.parameters.xyControllers.numActive.value(), 2);
    EXPECT_EQ(tree.connections(), (Names{"XY 1 Ver > Dry Level", "XY 2 Hor > Wet Level"}));
}

TEST(SordelinSlots, DeliverTheirSettingsToTheMatrix)
{
    Tree tree;
    GraphFixture graph;
    ModulationMatrix matrix(graph.environment, tree.modulation.configuration);
    FunctionProducer axis(graph.environment, [](std::uint64_t) { return 0.5f; });
    matrix.setSource(0, &axis);
    tree.modulation.matrix = &matrix;
    ModulationSlotParameterSet& slot = tree.parameters.slots[6];
    slot.source.deliverValue(1.0f);
    slot.target.deliverValue(80.0f);  // Dry Level
    slot.level.deliverValue(0.7f);    // 0.36 on the curve
    tree.parameters.dryLevel.deliverValue(0.0f);
    const auto dry = [&] { return graph.render(*matrix.producerForTarget(79), 300).back(); };
    EXPECT_FLOAT_EQ(dry(), 0.18f);
    slot.bypassed.deliverValue(1.0f);
    EXPECT_FLOAT_EQ(dry(), 0.0f);
    slot.bypassed.deliverValue(0.0f);
    tree.parameters.dryLevel.deliverValue(1.0f);
    slot.inverted.deliverValue(1.0f);
    EXPECT_FLOAT_EQ(graph.render(*matrix.producerForTarget(79), 8000).back(), 0.82f);
    slot.target.deliverValue(0.0f);
    EXPECT_FLOAT_EQ(dry(), 1.0f);
    slot.target.deliverValue(80.0f);
    slot.source.deliverValue(0.0f);
    EXPECT_FLOAT_EQ(dry(), 1.0f);
}

// Every sort of target, by the kind of source that reaches it otherwise than the rest do.
TEST(SordelinSlots, ReachAsFarAsTheirSourceDoesOnTheirTarget)
{
    constexpr int xy = 0, xlfo = 8, eg = 14, ef = 20, midi = 24;
    struct Row {
        int target, source;
        float base, value, level, expected;
    };
    for (const auto& [target, source, base, value, level, expected] : {
             Row{0, xy, 100.0f, 1.0f, 0.1f, 599.5f},    // 100 + 4995 / 10
             Row{5, xlfo, 100.0f, 1.0f, 0.1f, 150.0f},  // 500
             Row{0, eg, 100.0f, 1.0f, 0.1f, 200.0f},    // 1000
             Row{5, ef, 100.0f, 1.0f, 0.1f, 300.0f},    // 2000
             Row{0, midi, 100.0f, -1.0f, 0.1f, 5.0f},   // down to the end
             Row{1, xy, 1.0f, -1.0f, 1.0f, 0.0f},       // offsets go below what the knob does
             Row{1, xlfo, 1.0f, 1.0f, 0.5f, 1.25f},     // 0.5
             Row{2, xy, 0.5f, 1.0f, 1.0f, 1.0f},        // feedback ends at 1
             Row{3, xy, 0.5f, 1.0f, 1.0f, 2.0f},        // cross feedback at 2
             Row{8, ef, 0.5f, 0.25f, 0.5f, 1.0f},       // 4
             Row{10, xlfo, 10.0f, 1.0f, 0.5f, 12.1f},   // 4.2 octaves
             Row{10, midi, 10.0f, 0.5f, 0.5f, 12.5f},   // 10
             Row{10, ef, 4.0f, 0.5f, 0.5f, 9.0f},       // 20
             Row{14, xy, 0.0f, -0.5f, 0.5f, -1.75f},    // 7
             Row{12, ef, 0.0f, 0.5f, 0.5f, 0.5f},       // 2
             Row{16, eg, 1.0f, 1.0f, 0.5f, 13.5f},      // 25 Hz
             Row{17, xy, 0.0f, 0.5f, 0.5f, 0.5f},       // 2
             Row{18, xy, 0.0f, 1.0f, 0.16f, 1.0f},      // a cycle at the middle of the knob
             Row{34, xy, 1.0f, 1.0f, 0.2f, 2.9f},       // 9.5 s
             Row{36, xy, 1.0f, -1.0f, 1.0f, 0.001451247f},
             Row{70, xy, 0.1f, 1.0f, 0.5f, 0.34975f},    // 0.4995 s
             Row{73, ef, 0.05f, 1.0f, 0.5f, 2.525f},     // 4.95 s
             Row{78, xy, 1.0f, 1.0f, 0.1f, 7.3079887f},  // 63.079887
             Row{82, xy, 0.0f, -0.25f, 0.5f, -0.25f},    // 2
             Row{83, ef, 0.1f, 0.5f, 0.5f, 0.6f},        // 2
         }) {
        ModulationConfiguration configuration = sordelinModulation();
        GraphFixture graph;
        ModulationMatrix matrix(graph.environment, configuration);
        FunctionProducer signal(graph.environment, [at = value](std::uint64_t) { return at; });
        matrix.setSource(source, &signal);
        matrix.target(target).setParameterSignal(base);
        matrix.setSlotLevel(23, level);
        matrix.setSlotSource(23, source);
        matrix.setSlotTarget(23, target);
        EXPECT_FLOAT_EQ(graph.render(*matrix.producerForTarget(target), 100).back(), expected)
            << source << " on " << target;
    }
}
