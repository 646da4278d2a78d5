#include "parameters/IndexedPluginParameter.h"

#include "parameters/ItemList.h"
#include "parameters/ToggleFloatPluginParameter.h"
#include "support/RecordingOwner.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

enum class Colour { Red, Green, Blue };
constexpr std::string_view colours[] = {"Red", "Green", "Blue"};
constexpr std::string_view slopes[] = {"12", "24", "48"};

TEST(IndexedPluginParameter, CutsValuesToPositionsInTheRange)
{
    RecordingOwner owner;
    IndexedPluginParameter<Colour> colour(&owner, "Colour");
    colour.setItems(colours, Colour::Green);
    EXPECT_EQ(colour.defaultValue(), 1.0f);
    EXPECT_EQ(colour.value(), Colour::Green);
    EXPECT_TRUE(colour.stepped);

    struct Row {
        float set;
        float taken;
    };
    for (const auto& [set, taken] :
         {Row{1.999f, 1.0f}, Row{5.0f, 2.0f}, Row{-3.0f, 0.0f}, Row{1e30f, 2.0f}}) {
        colour.setValue(set, announceChange);
        EXPECT_EQ(colour.currentValue(), taken) << set;
    }
    owner.changes.clear();
    colour.setValue(2.5f, announceChange);
    colour.setValue(NAN, announceChange);
    EXPECT_TRUE(owner.changes.empty());
    colour.setValue(1.0f, noEcho);
    EXPECT_EQ(owner.changes, (std::vector<RecordingOwner::Change>{{0, 1.0f, noEcho}}));
}

TEST(IndexedPluginParameter, NormalisedValuesRoundToTheNearestPosition)
{
    IndexedPluginParameter<Colour> colour(nullptr, "Colour");
    colour.setItems(colours, Colour::Red);
    struct Row {
        float normal;
        float value;
    };
    for (const auto& [normal, value] : {Row{0.0f, 0.0f}, Row{0.24f, 0.0f}, Row{0.26f, 1.0f}, Row{0.5f, 1.0f},
                                        Row{0.76f, 2.0f}, Row{1.0f, 2.0f}, Row{-1.0f, 0.0f}, Row{2.0f, 2.0f}})
        EXPECT_EQ(colour.normalToValue(normal), value) << normal;
    EXPECT_EQ(colour.valueToNormal(1.0f), 0.5f);
}

TEST(IndexedPluginParameter, ItemsAreFoundByNameThenByNumber)
{
    IndexedPluginParameter<int> slope(nullptr, "Slope");
    slope.setItems(slopes, 1, 1);  // positions 1 to 3
    EXPECT_EQ(slope.maximumValue(), 3.0f);
    EXPECT_TRUE(slope.hasItemNames());
    EXPECT_EQ(slope.valueText(1.0f), "12");
    EXPECT_EQ(slope.valueText(99.0f), "48");
    EXPECT_EQ(slope.parseText("24"), 2.0f);
    EXPECT_EQ(slope.parseText(" 3"), 3.0f);  // no item: a position
    EXPECT_EQ(slope.parseText("4"), std::nullopt);
    EXPECT_EQ(slope.parseText("steep"), std::nullopt);

    IndexedPluginParameter<Colour> colour(nullptr, "Colour");
    colour.setItems(colours, Colour::Red);
    EXPECT_EQ(colour.parseText("bLUE"), 2.0f);
    EXPECT_EQ(colour.shortText(1.0f, 3), "Grn");
    constexpr std::string_view twins[] = {"on", "ON"};
    IndexedPluginParameter<int> twin(nullptr, "Twin");
    twin.setItems(twins, 0);
    EXPECT_EQ(twin.parseText("ON"), 1.0f);  // the same case of letters goes first
}

TEST(IndexedPluginParameter, NumbersWithoutItemsReadAndPrintAsSuch)
{
    IndexedPluginParameter<int> controller(nullptr, "Controller");
    controller.setRange(0, 127, 7);
    EXPECT_TRUE(controller.isNumeric());
    EXPECT_EQ(controller.valueText(64.0f), "64");
    EXPECT_EQ(controller.parseText("+64"), 64.0f);
    EXPECT_EQ(controller.parseText("128"), std::nullopt);
    EXPECT_EQ(controller.parseText("-1"), std::nullopt);
}

TEST(IndexedPluginParameter, AValueMapStandsBetweenPositionsAndRawValues)
{
    static constexpr int sizes[] = {16, 32, 64};
    IndexedPluginParameter<int> size(nullptr, "Size");
    size.format.valueMap = sizes;
    size.format.valueMapBase = 1;
    size.setRange(1, 3, 2);
    Receiver<int> receiver;
    size.bind(receiver);

    EXPECT_EQ(size.value(), 32);
    EXPECT_EQ(size.valueText(3.0f), "64");
    EXPECT_EQ(size.parseText("16"), 1.0f);
    EXPECT_EQ(size.valueToSignal(3.0f), 64.0f);
    EXPECT_EQ(size.signalToValue(64.0f), 3.0f);
    EXPECT_EQ(size.signalToValue(17.0f), 1.0f);  // what isn't in the map is its first entry
    size.deliverValue(3.0f);
    EXPECT_EQ(receiver.values, (std::vector{64}));
}

TEST(IndexedPluginParameter, DeliversTypedValues)
{
    IndexedPluginParameter<bool> enabled(nullptr, "Enabled");
    Receiver<bool> receiver;
    enabled.bind(receiver);
    enabled.deliverValue(1.0f);
    enabled.deliverValue(0.0f);
    EXPECT_EQ(receiver.values, (std::vector{true, false}));
}

TEST(IndexedPluginParameter, ParametersMayShareItemsAndDifferInRange)
{
    const ItemList shared("None,One,Two");
    IndexedPluginParameter<int> all(nullptr, "All");
    IndexedPluginParameter<int> some(nullptr, "Some");
    all.setItems(shared.names(), 0);
    some.setItems(shared.names(), 0);
    some.format.maximum = 1;
    EXPECT_EQ(all.valueText(2.0f), "Two");
    EXPECT_EQ(all.maximumValue(), 2.0f);
    EXPECT_EQ(some.valueText(1.0f), "One");
    EXPECT_EQ(some.maximumValue(), 1.0f);
}

TEST(IndexedPluginParameter, OlderVersionsKnewShorterRanges)
{
    // Positions 0 to 4 up to version 1, 5 to 7 came with version 2, 8 and 9 later.
    static constexpr IndexedValueFormat::VersionLimit limits[] = {{4, 1}, {7, 2}};
    IndexedPluginParameter<int> style(nullptr, "Style");
    style.setRange(0, 9, 0);
    style.format.versionLimits = limits;
    EXPECT_EQ(style.limitForVersion(2), 7);
    EXPECT_EQ(style.limitForVersion(3), -1);
    EXPECT_EQ(style.valueToNormalForVersion(2.0f, 1), 0.5f);  // on 0..4
    EXPECT_EQ(style.valueToNormalForVersion(6.0f, 1), 0.0f);
    EXPECT_EQ(style.valueToNormalForVersion(7.0f, 2), 1.0f);  // on 4..7
    EXPECT_EQ(style.normalToValueForVersion(0.5f, 1), 2.0f);
    EXPECT_EQ(style.normalToValueForVersion(0.0f, 1), 0.0f);
    EXPECT_EQ(style.normalToValueForVersion(1.0f, 2), 7.0f);
    EXPECT_EQ(style.normalToValueForVersion(0.0f, 2), std::nullopt);
    EXPECT_EQ(style.normalToValueForVersion(1.0f, 3), 9.0f);  // on 7..9
}

TEST(ToggleFloatPluginParameter, RampsSignalsToTheValueOfThePosition)
{
    static constexpr float factors[] = {1.0f, -1.0f};
    static constexpr std::string_view items[] = {"Normal", "Inverted"};
    wave::Environment environment;
    FloatParameter signal(environment, 1.0f);
    signal.setRange(-1.0f, 1.0f);
    ToggleFloatPluginParameter<bool> invert(nullptr, "Invert");
    invert.setItems(items, false);
    invert.setSignals(factors);
    invert.drive(signal);
    Receiver<bool> receiver;
    invert.bind(receiver);

    invert.deliverValue(1.0f);
    EXPECT_EQ(signal.target(), -1.0f);
    EXPECT_EQ(receiver.values, (std::vector{true}));
    invert.setSignals({});
    invert.deliverValue(0.0f);
    EXPECT_EQ(signal.target(), 0.0f);  // the position itself
}

}  // namespace
