#include "modulation/SlotOperations.h"

#include "modulation/ModMatrixParamController.h"
#include "support/RecordingOwner.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr int firstLevel = 4;
constexpr int slotCount = 8;

/// What a slot says; a target of `on(s)` is the level of slot s.
struct Row {
    int source = -1;
    int target = -1;
    float level = 0.5f;
    bool bypassed = false;
    bool inverted = false;
    bool operator==(const Row&) const = default;
};
using Rows = std::vector<Row>;

constexpr int on(int slot) { return firstLevel + slot; }

std::ostream& operator<<(std::ostream& out, const Row& row)
{
    return out << row.source << "->" << row.target << " * " << row.level << (row.bypassed ? " bypassed" : "")
               << (row.inverted ? " inverted" : "");
}

/// The parameters of eight slots, with as many in use as there are rows.
struct Slots {
    explicit Slots(const Rows& rows)
    {
        owner.configuration.firstSlotTarget = firstLevel;
        owner.configuration.slotCount = slotCount;
        owner.configuration.sources = {{ModulationSource::XY, {}},
                                       {ModulationSource::XY, {}},
                                       {ModulationSource::XLFO, {3}},
                                       {ModulationSource::EG, {}}};
        owner.configuration.ranges.resize(2);
        owner.configuration.targetRanges = {0, 1, 0, 0};
        owner.configuration.targetRanges.insert(owner.configuration.targetRanges.end(), slotCount, 0);
        owner.slotList = &list;
        list.initialiseSets();
        for (int slot = 0; slot < static_cast<int>(rows.size()); ++slot) {
            const Row& row = rows[static_cast<std::size_t>(slot)];
            controller().findFreeSlot();
            controller().setSource(slot, row.source);
            controller().setTarget(slot, row.target);
            controller().setLevel(slot, row.level);
            controller().setBypassed(slot, row.bypassed);
            controller().setInverted(slot, row.inverted);
        }
        parameters.changedOutsideBracket = false;
    }
    ModMatrixParamController& controller() { return owner.slotController(); }
    SlotOperations operations() { return SlotOperations(controller()); }
    int active() const { return list.numActive.value(); }
    Row row(int slot)
    {
        // To four digits: a level goes through the curve of its parameter and back.
        const float level = std::round(controller().level(slot) * 10000.0f) / 10000.0f;
        return {controller().source(slot), controller().target(slot), level, controller().isBypassed(slot),
                controller().isInverted(slot)};
    }
    Rows rows()
    {
        Rows all;
        for (int slot = 0; slot < active(); ++slot)
            all.push_back(row(slot));
        return all;
    }

    RecordingOwner parameters;
    ModulationMatrixOwner owner;
    const ModulationSlotParameters shared{owner, firstLevel, "A,B,C,D", "W,X,Y,Z,L1,L2,L3,L4,L5,L6,L7,L8"};
    ModulationSlotParameterSetList list{parameters, shared, slotCount};
};

using Numbers = std::vector<int>;

TEST(ModMatrixParamController, HandsOutTheFirstSlotThatIsNotInUse)
{
    Slots slots({{0, 1}, {}});
    EXPECT_EQ(slots.controller().findFreeSlot(), 2);  // an empty one in use stays where it is
    for (int slot = 3; slot < slotCount; ++slot)
        EXPECT_EQ(slots.controller().findFreeSlot(), slot);
    EXPECT_EQ(slots.controller().findFreeSlot(), -1);
    EXPECT_EQ(slots.active(), slotCount);
    EXPECT_FLOAT_EQ(slots.controller().defaultLevel.value(), 0.16f);  // of the middle of the knob
}

TEST(ModMatrixParamController, FindsSlotsByWhatTheyConnect)
{
    Slots slots({{0, 1}, {1, 1}, {2, 0}, {0, on(1)}, {3, -1}, {-1, 1}});
    ModMatrixParamController& controller = slots.controller();
    EXPECT_EQ(controller.slotsOfSource(0), (Numbers{0, 3}));
    EXPECT_EQ(controller.slotsOfSources(1, 3), (Numbers{1, 2, 4}));
    EXPECT_EQ(controller.slotsOfTarget(1), (Numbers{0, 1, 5}));
    EXPECT_EQ(controller.slotsOfTargetRange(0, 2), (Numbers{0, 1, 2, 5}));
    EXPECT_EQ(controller.slotsOfTargets({0, on(1)}), (Numbers{2, 3}));
    EXPECT_EQ(controller.slotsMatching(ModulationSource::XY, -1), (Numbers{0, 1, 3}));
    EXPECT_EQ(controller.slotsMatching(-1, 1), (Numbers{0, 1}));
    EXPECT_EQ(controller.slotsMatching(ModulationSource::XLFO, 1), Numbers{});
}

TEST(ModMatrixParamController, KnowsWhichSlotsReachNothing)
{
    Slots slots({{0, 1}, {0, -1}, {0, 1, 0.5f, true}, {2, 3}, {0, on(5)}, {0, on(4)}, {2, on(0)}});
    const bool valid[] = {true, false, false, false, false, false, true};
    for (int slot = 0; slot < 7; ++slot)
        EXPECT_EQ(slots.controller().isValid(slot), valid[slot]) << slot;
}

TEST(SlotOperations, CopiesAllSettings)
{
    Slots slots({{2, 1, 0.3f, true, true}, {}});
    slots.operations().copySlot(0, 1);
    EXPECT_EQ(slots.row(1), (Row{2, 1, 0.3f, true, true}));
}

TEST(SlotOperations, SwapsTwoSlotsAndWhatPointsAtThem)
{
    Slots slots({{0, 1, 0.3f, true}, {1, on(0), 0.4f}, {2, 0, 0.6f, false, true}, {3, on(2)}});
    slots.operations().swapSlots(0, 2);
    EXPECT_EQ(slots.rows(),
              (Rows{{2, 0, 0.6f, false, true}, {1, on(2), 0.4f}, {0, 1, 0.3f, true}, {3, on(0)}}));
    slots.operations().swapSlots(0, 3);  // one of them points at the other
    EXPECT_EQ(slots.rows(),
              (Rows{{3, on(3)}, {1, on(2), 0.4f}, {0, 1, 0.3f, true}, {2, 0, 0.6f, false, true}}));
    EXPECT_FALSE(slots.parameters.changedOutsideBracket);
}

TEST(SlotOperations, ClearsAChainOfSlots)
{
    Slots slots({{0, 1}, {1, on(0)}, {2, 0}, {3, on(1), 0.5f, true, true}});
    Numbers removed;
    slots.operations().clearSlot(0, removed);
    EXPECT_EQ(removed, (Numbers{0, 1, 3}));
    EXPECT_EQ(slots.rows(), (Rows{{-1, -1, 0.0f}, {-1, -1, 0.0f}, {2, 0}, {-1, -1, 0.0f}}));
    EXPECT_FALSE(slots.parameters.changedOutsideBracket);
}

TEST(SlotOperations, EndWhereSlotsHangOnEachOther)
{
    const Rows circle{{0, on(1), 0.2f}, {1, on(0), 0.4f}};
    Slots cleared(circle);
    Numbers removed;
    cleared.operations().clearSlot(1, removed);
    EXPECT_EQ(removed, (Numbers{1, 0}));
    Slots scaled(circle);
    scaled.operations().scaleLevel(0, 1.0f, 2.0f);
    EXPECT_EQ(scaled.rows(), (Rows{{0, on(1), 0.1f}, {1, on(0), 0.2f}}));
    Slots split(circle);
    EXPECT_EQ(split.operations().splitSlot(0, 0.5f), 2);
    EXPECT_EQ(split.rows(), (Rows{{0, on(1), 0.2f}, {1, on(0), 0.4f}, {0, on(1), 0.1f}, {1, on(2), 0.2f}}));
    Slots removedFromList(circle);
    removedFromList.list.removeSet(0);
    EXPECT_EQ(removedFromList.active(), 0);
}

TEST(SlotOperations, SortsBySourceThenTarget)
{
    Slots slots(
        {{1, 1, 0.1f}, {}, {0, 2, 0.2f}, {3, on(0), 0.3f}, {1, -1, 0.4f}, {0, 1, 0.6f}, {1, 1, 0.7f}});
    int selected = 5;
    slots.operations().sortSlots(7, selected);
    EXPECT_EQ(slots.rows(), (Rows{{0, 1, 0.6f},
                                  {0, 2, 0.2f},
                                  {1, 1, 0.1f},
                                  {1, 1, 0.7f},
                                  {1, -1, 0.4f},
                                  {3, on(2), 0.3f},  // on the first row still
                                  {}}));
    EXPECT_EQ(selected, 0);
}

TEST(SlotOperations, ScalesALevelWithWhatModulatesIt)
{
    Slots slots({{0, 1, 0.6f}, {1, on(0), 0.4f}, {2, on(1), 0.2f}, {3, 1, 0.3f}});
    slots.operations().scaleLevel(0, 3.0f, 4.0f);
    EXPECT_EQ(slots.rows(), (Rows{{0, 1, 0.45f}, {1, on(0), 0.3f}, {2, on(1), 0.15f}, {3, 1, 0.3f}}));
}

TEST(SlotOperations, SplitsASlotWithWhatModulatesIt)
{
    Slots slots({{0, 1, 0.6f}, {1, on(0), 0.4f, true}});
    EXPECT_EQ(slots.operations().splitSlot(0, -0.5f), 2);
    EXPECT_EQ(
        slots.rows(),
        (Rows{{0, 1, 0.6f}, {1, on(0), 0.4f, true}, {0, 1, 0.3f, false, true}, {1, on(2), 0.2f, true}}));

    Slots full(Rows(slotCount, Row{0, 1}));
    EXPECT_EQ(full.operations().splitSlot(0, 0.5f), -1);
    EXPECT_EQ(full.rows(), Rows(slotCount, Row{0, 1}));
}

TEST(SlotOperations, CompactsWhatIsInUse)
{
    Slots slots({{}, {3, 1, 0.1f}, {}, {0, on(1), 0.2f}, {2, -1, 0.3f}, {0, 1, 0.6f}, {1, on(4), 0.4f}});
    compactSlots(slots.controller(), slots.list, 7);
    // The half connection goes, and what hung on it.
    EXPECT_EQ(slots.rows(), (Rows{{0, 1, 0.6f}, {0, on(2), 0.2f}, {3, 1, 0.1f}}));
    EXPECT_EQ(slots.row(3), Row({-1, -1, 0.16f}));
    EXPECT_FALSE(slots.parameters.changedOutsideBracket);
}

TEST(ModulationSlotParameterSetList, RemovesASlotWithWhatHangsOnItAndRenumbersTheRest)
{
    struct Case {
        int removed;
        Rows left;
    };
    const Rows before{{0, on(2)}, {1, 1}, {2, 0}, {3, on(1)}, {0, on(3)}, {1, on(5)}, {2, 2}};
    for (const auto& [removed, left] : {
             Case{0, {{1, 1}, {2, 0}, {3, on(0)}, {0, on(2)}, {1, on(4)}, {2, 2}}},
             Case{1, {{0, on(1)}, {2, 0}, {1, on(2)}, {2, 2}}},
             Case{2, {{1, 1}, {3, on(0)}, {0, on(1)}, {1, on(3)}, {2, 2}}},
             Case{5, {{0, on(2)}, {1, 1}, {2, 0}, {3, on(1)}, {0, on(3)}, {2, 2}}},
             Case{7, before},  // not in use
         }) {
        Slots slots(before);
        slots.list.removeSet(removed);
        EXPECT_EQ(slots.rows(), left) << removed;
        EXPECT_FALSE(slots.parameters.changedOutsideBracket);
        EXPECT_EQ(slots.parameters.openBrackets, 0);
    }
}

TEST(SlotOperations, RemovesTheSlotsOfASourceAndThoseOnItsOwnParameters)
{
    Slots slots({{0, 1, 0.1f}, {2, 0}, {1, on(1)}, {0, 3}, {3, on(0), 0.2f}});
    removeSlotsOfSource(slots.controller(), slots.list, 2);
    EXPECT_EQ(slots.rows(), (Rows{{0, 1, 0.1f}, {3, on(0), 0.2f}}));
}

}  // namespace
