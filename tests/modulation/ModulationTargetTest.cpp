#include "modulation/ModulationMatrix.h"
#include "modulation/ModulationTargetParameter.h"
#include "support/GraphFixture.h"
#include "support/RecordingOwner.h"

#include <gtest/gtest.h>

namespace {

/// One parameter of 0..1 with a signal of 0..2 on a target that ends at 1.5.
struct OneTarget : GraphFixture {
    OneTarget()
    {
        owner.configuration.ranges.resize(1);
        owner.configuration.ranges[0].upper = 1.5f;
        owner.configuration.targetRanges = {0};
        matrix = std::make_unique<ModulationMatrix>(environment, owner.configuration);
        parameter.setSignalRange(0.0f, 2.0f);
    }
    RecordingOwner parameters;
    ModulationMatrixOwner owner;
    std::unique_ptr<ModulationMatrix> matrix;
    ModulationTargetParameter parameter{&parameters, "Level", owner, 0};
};

TEST(ModulationTargetParameter, DeliversItsSignalToItsTarget)
{
    OneTarget fixture;
    fixture.owner.matrix = fixture.matrix.get();
    fixture.parameter.deliverValue(0.25f);
    EXPECT_EQ(fixture.matrix->target(0).parameterSignal(), 0.5f);
    EXPECT_EQ(fixture.matrix->target(0).forwarder.currentValue(), 0.5f);
    EXPECT_EQ(fixture.render(*fixture.matrix->producerForTarget(0), 3), (std::vector{0.5f, 0.5f, 0.5f}));
}

TEST(ModulationTargetParameter, TheTargetsLimitsHoldTheBaseButNotWhatTheParameterSaid)
{
    OneTarget fixture;
    fixture.owner.matrix = fixture.matrix.get();
    fixture.parameter.deliverValue(1.0f);
    EXPECT_EQ(fixture.matrix->target(0).base.target(), 1.5f);
    EXPECT_EQ(fixture.matrix->target(0).parameterSignal(), 2.0f);
}

TEST(ModulationTargetParameter, TellsTheChangeListenerAfterTheBaseHasMoved)
{
    struct Listener final : ModulationMatrix::SecondaryTarget {
        explicit Listener(ModulationMatrix::Target& watched) : target(watched) {}
        void baseValueChanged() noexcept override { heard.push_back(target.base.target()); }
        ModulationMatrix::Target& target;
        std::vector<float> heard;
    };
    OneTarget fixture;
    fixture.owner.matrix = fixture.matrix.get();
    Listener listener(fixture.matrix->target(0));
    fixture.matrix->target(0).changeListener = &listener;
    fixture.parameter.deliverValue(0.25f);
    EXPECT_EQ(listener.heard, (std::vector{0.5f}));
}

TEST(ModulationTargetParameter, WithoutAMatrixOnlyListenersHear)
{
    OneTarget fixture;
    Receiver<float> receiver;
    fixture.parameter.bind(receiver);
    fixture.parameter.deliverValue(0.25f);
    EXPECT_EQ(receiver.values, (std::vector{0.5f}));
    EXPECT_EQ(fixture.matrix->target(0).parameterSignal(), 0.0f);
}

}  // namespace
