#include "core/MidiMultiVirtualPluginParameter.h"

#include "parameters/FloatPluginParameter.h"
#include "support/RecordingOwner.h"

#include <gtest/gtest.h>

namespace {

struct LinkFixture : testing::Test {
    LinkFixture()
    {
        high.setRange(-10.0f, 10.0f, 0.0f);  // a range of its own: the link works on 0..1
        link.addParameter(low);
        link.addParameter(high);
    }
    void place(float lowNormal, float highNormal)
    {
        low.setValue(low.normalToValue(lowNormal), noEcho);
        high.setValue(high.normalToValue(highNormal), noEcho);
    }
    void expect(float lowNormal, float highNormal)
    {
        EXPECT_NEAR(low.valueToNormal(low.currentValue()), lowNormal, 1e-6);
        EXPECT_NEAR(high.valueToNormal(high.currentValue()), highNormal, 1e-6);
    }
    RecordingOwner owner;
    FloatPluginParameter low{&owner, "Low"};
    FloatPluginParameter high{&owner, "High"};
    MidiMultiVirtualPluginParameter other{owner, "Other"};
    MidiMultiVirtualPluginParameter link{owner, "Link"};
};

}  // namespace

TEST_F(LinkFixture, IsATargetOfItsOwnKind)
{
    EXPECT_EQ(other.index(), 0x100000);
    EXPECT_EQ(link.index(), 0x100001);
    EXPECT_EQ(link.name(), "Link");
    EXPECT_EQ(owner.parameterCount(), 2);  // hosts don't see it
}

TEST_F(LinkFixture, KeepsTheDistanceOverAWholeSweep)
{
    place(0.4f, 0.6f);
    for (int step : {64, 100, 127, 127, 90, 20, 0, 0, 64, 127, 0, 33}) {
        const float value = static_cast<float>(step) / 127.0f;
        link.setNormalised(value);
        expect(std::clamp(value - 0.1f, 0.0f, 1.0f), std::clamp(value + 0.1f, 0.0f, 1.0f));
    }
    EXPECT_EQ(owner.changes.back().flags, announceChange);
}

TEST_F(LinkFixture, FindsItsDistanceAgainBehindTheEndOfTheRange)
{
    place(0.7f, 0.9f);
    link.setNormalised(1.0f);
    expect(0.9f, 1.0f);
    link.setNormalised(0.5f);
    expect(0.4f, 0.6f);
}

TEST_F(LinkFixture, TakesOverTheDistanceThatSomebodyElseMade)
{
    place(0.5f, 0.5f);
    link.setNormalised(0.5f);
    place(0.2f, 0.5f);
    link.setNormalised(0.5f);
    expect(0.35f, 0.65f);  // 0.3 apart around the controller
    link.setNormalised(1.0f);
    expect(0.85f, 1.0f);
    place(0.85f, 0.95f);  // moved while one was held up: the old distance is gone
    link.setNormalised(0.5f);
    expect(0.45f, 0.55f);
}
