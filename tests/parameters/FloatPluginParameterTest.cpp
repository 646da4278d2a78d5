#include "parameters/FloatPluginParameter.h"

#include "dsp/Conversions.h"
#include "parameters/DBParameterUnits.h"
#include "parameters/ParameterCurves.h"
#include "support/RecordingOwner.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Changes = std::vector<RecordingOwner::Change>;

TEST(FloatPluginParameter, ConstructionGivesItTheNextPlaceInItsOwnersList)
{
    RecordingOwner owner;
    const FloatPluginParameter first(&owner, "First");
    const FloatPluginParameter second(&owner, "Second");
    const FloatPluginParameter alone(nullptr, "Alone");
    EXPECT_EQ(first.index(), 0);
    EXPECT_EQ(second.index(), 1);
    EXPECT_EQ(&owner.parameterAt(1), &second);
    EXPECT_EQ(second.name, "Second");
    EXPECT_TRUE(second.automatable);
    EXPECT_FALSE(second.stepped);
    EXPECT_EQ(alone.index(), -1);
}

TEST(FloatPluginParameter, TellsItsOwnerOfRealChangesOnly)
{
    RecordingOwner owner;
    FloatPluginParameter parameter(&owner, "P");
    parameter.setRange(-1.0f, 2.0f, 0.5f);
    EXPECT_TRUE(owner.changes.empty());  // a default is no change

    parameter.setValue(0.5f, announceChange);
    parameter.setValue(0.5000001f, announceChange);  // less than the float epsilon away
    parameter.setValue(NAN, announceChange);
    EXPECT_TRUE(owner.changes.empty());
    parameter.setValue(7.0f, announceChange);
    parameter.setValue(-HUGE_VALF, noEcho);
    EXPECT_EQ(owner.changes, (Changes{{0, 2.0f, announceChange}, {0, -1.0f, noEcho}}));
    EXPECT_EQ(parameter.currentValue(), -1.0f);
}

TEST(FloatPluginParameter, MapsValuesThroughCurveRangeAndDisplay)
{
    FloatPluginParameter level(nullptr, "Level");
    level.setRange(-36.0f, 36.0f, 0.0f);
    level.setCurve(decibelCurve);
    level.format.shown = {gainToDb, dbToGain};
    level.setUnit(dbUnit);
    EXPECT_NEAR(level.valueToSignal(20.0f), 10.0f, 1e-5f);
    EXPECT_NEAR(level.signalToValue(0.1f), -20.0f, 1e-4f);
    EXPECT_NEAR(level.valueToDisplay(20.0f), 20.0f, 1e-4f);
    EXPECT_EQ(level.valueToNormal(18.0f), 0.75f);
    EXPECT_EQ(level.normalToValue(0.25f), -18.0f);

    FloatPluginParameter offset(nullptr, "Offset");
    offset.setRange(-1.0f, 1.0f, 0.0f);
    offset.setSignalRange(10.0f, 30.0f);
    offset.format.displayScale = 2.0f;
    offset.format.displayOffset = 1.0f;
    EXPECT_EQ(offset.valueToSignal(-1.0f), 10.0f);
    EXPECT_EQ(offset.valueToSignal(0.5f), 25.0f);
    EXPECT_EQ(offset.valueToDisplay(0.5f), 51.0f);
    EXPECT_EQ(offset.displayToValue(51.0f), 0.5f);
}

TEST(FloatPluginParameter, TypedSilenceIsTheEndOfTheRange)
{
    // Gains below -180 dB all show as -INF. The text means exactly 0, not the nearest value that shows so.
    FloatPluginParameter level(nullptr, "Level");
    level.setCurve(levelCurve);
    level.format.shown = {gainToDb, dbToGain};
    level.setUnit(dbUnit);
    EXPECT_EQ(level.valueText(0.0f), "-INF dB");
    EXPECT_EQ(level.parseText("-INF dB"), 0.0f);
    EXPECT_EQ(level.parseText("0.00 dB"), 1.0f);
}

TEST(FloatPluginParameter, DeliversItsSignalToListenersAndToWhatIsBound)
{
    struct Listener final : ParameterListener {
        void parameterDelivered(AbstractPluginParameter& parameter, float signal) noexcept override
        {
            heard.push_back({parameter.index(), signal, 0});
        }
        Changes heard;
    } listener;
    RecordingOwner owner;
    FloatPluginParameter parameter(&owner, "P");
    parameter.setSignalRange(10.0f, 20.0f);
    Receiver<float> receiver;
    parameter.addListener(listener);
    parameter.bind(receiver);

    parameter.setValue(0.25f, announceChange);
    EXPECT_TRUE(receiver.values.empty());  // setting is not delivering
    parameter.deliverValue(0.5f);
    EXPECT_EQ(listener.heard, (Changes{{0, 15.0f, 0}}));
    EXPECT_EQ(receiver.values, (std::vector{15.0f}));
    EXPECT_EQ(parameter.currentValue(), 0.25f);
}

TEST(FloatPluginParameter, RescalingKeepsTheRatioThatTheUserReads)
{
    FloatPluginParameter time(nullptr, "Time");
    time.setSignalRange(0.0f, 1000.0f);
    EXPECT_NEAR(time.rescale(0.2f, 0.4f, 0.8f), 0.4f, 1e-6f);
    EXPECT_EQ(time.rescale(0.2f, 0.0f, 0.8f), 0.2f);  // nothing to keep a ratio to
}

TEST(FloatPluginParameter, ShortTextIsCut)
{
    const FloatPluginParameter parameter(nullptr, "P");
    EXPECT_EQ(parameter.shortText(0.25f, 4), "0.25");
}

TEST(ParameterCollection, ReadsAllValuesAndWritesAsManyAsThereAre)
{
    RecordingOwner owner;
    FloatPluginParameter a(&owner, "A");
    FloatPluginParameter b(&owner, "B");
    owner.list.writeValues(std::vector{0.25f});
    std::vector<float> values{9.0f, 9.0f, 9.0f};
    owner.list.readValues(values);
    EXPECT_EQ(values, (std::vector{0.25f, 0.0f}));
    owner.list.writeValues(std::vector{0.5f, 0.75f, 1.0f});
    EXPECT_EQ(b.currentValue(), 0.75f);
}

}  // namespace
