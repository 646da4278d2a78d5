#include "product/XLFOSources.h"

#include "product/SordelinModulationIds.h"
#include "product/SordelinProcessor.h"
#include "support/GraphFixture.h"
#include "support/RecordingOwner.h"
#include "support/XLFOShape.h"

#include <gtest/gtest.h>

#include <array>

namespace {

/// The XLFOs on a parameter tree, without the rest of the processor.
struct Sources : GraphFixture {
    Sources()
    {
        parameters.initialise();
        matrix = std::make_unique<ModulationMatrix>(environment, modulation.configuration);
        modulation.matrix = matrix.get();
        sources = std::make_unique<XLFOSources>(environment, *matrix, parameters.xlfos);
        for (int i = 0; i < SordelinLimits::xlfos; ++i)
            deliverAll(parameters.xlfos[i]);
        deliver(parameters.xlfos.numActive, 6.0f);
    }
    void deliver(AbstractPluginParameter& parameter, float value)
    {
        parameter.setValue(value, noEcho);
        parameter.deliverValue(value);
        sources->parameterApplied(parameter.index());
    }
    void deliverAll(XLFOParameterSet& set)
    {
        for (FloatPluginParameter* parameter :
             {static_cast<FloatPluginParameter*>(&set.frequency), &set.frequencyOffset, &set.balance,
              static_cast<FloatPluginParameter*>(&set.phaseOffset),
              static_cast<FloatPluginParameter*>(&set.glide)})
            parameter->deliverValue(parameter->currentValue());
        set.steps.numActive.deliverValue(2.0f);
    }
    /// Makes an XLFO rise from -1 at phase 0 to 1 at 0.5 and fall again, at `hertz`.
    void makeTriangle(XLFOParameterSet& set, float hertz)
    {
        deliver(set.steps[0].value, -1.0f);
        deliver(set.steps[1].value, 1.0f);
        deliver(set.steps[0].glide, 1.0f);
        deliver(set.steps[1].glide, 1.0f);
        deliver(set.frequency, set.frequency.signalToValue(hertz));
    }
    /// Connects an XLFO to a target of depth 2 that rests at 0.
    void connect(int xlfo, int target)
    {
        matrix->setSlotLevel(0, 0.5f);
        matrix->setSlotSource(0, SordelinSources::xlfo(xlfo));
        matrix->setSlotTarget(0, target);
    }
    /// Where an XLFO stands after some time.
    float shownAfter(int samples, int xlfo)
    {
        FunctionProducer idle(environment, [](std::uint64_t) { return 0.0f; });
        render(idle, samples);
        return sources->displayValue(SordelinSources::xlfo(xlfo));
    }

    RecordingOwner owner;
    ModulationMatrixOwner modulation;
    SordelinParameters parameters{owner, modulation};
    std::unique_ptr<ModulationMatrix> matrix;
    std::unique_ptr<XLFOSources> sources;
};

}  // namespace

TEST(XLFOSources, FollowTheirOwnParameters)
{
    const XLFOShape shape = {{{0.1, 0.2},
                              {0.7, 1.0, XLFO::GlideCurve::Sine},
                              {-0.8, 0.5, XLFO::GlideCurve::SquareRoot},
                              {1.0, 0.0},
                              {-0.2, 0.3, XLFO::GlideCurve::Square}},
                             0.3f,
                             0.15};
    for (const int i : {0, 5}) {
        Sources tree;
        XLFOParameterSet& set = tree.parameters.xlfos[i];
        tree.deliver(set.steps.numActive, 5.0f);
        for (int step = 0; step < 5; ++step) {
            const XLFOShape::Step& from = shape.steps[static_cast<std::size_t>(step)];
            tree.deliver(set.steps[step].value, static_cast<float>(from.value));
            tree.deliver(set.steps[step].glide, static_cast<float>(from.glide));
            tree.deliver(set.steps[step].glideCurve, static_cast<float>(from.curve));
        }
        tree.deliver(set.balance, shape.balance);
        tree.deliver(set.glide, static_cast<float>(shape.addedGlide));
        tree.deliver(set.phaseOffset, set.phaseOffset.signalToValue(0.62f));
        tree.deliver(set.frequency, set.frequency.signalToValue(3.3f));
        tree.connect(i, SordelinTargets::wetPan);  // 1 to 1
        const auto out = tree.render(*tree.matrix->producerForTarget(SordelinTargets::wetPan), 30000);
        for (std::size_t t = 0; t < out.size(); ++t) {
            // Past the jump of a step, a rounded phase may be a sample early or late.
            const double phase = 0.62 + static_cast<double>(t) * 3.3 / 44100.0;
            const double early = shape.at(phase - 3e-5), late = shape.at(phase + 3e-5);
            ASSERT_GT(out[t], std::min(early, late) - 2e-3) << t;
            ASSERT_LT(out[t], std::max(early, late) + 2e-3) << t;
        }
        // After 30000 samples phase 0.26, early in the third step, is 5279 away.
        tree.deliver(set.steps[2].random, 1.0f);
        const auto other = tree.render(*tree.matrix->producerForTarget(SordelinTargets::wetPan), 6000);
        EXPECT_GT(std::fabs(other[5279] + 0.8f), 1e-4f);
    }
}

TEST(XLFOSources, StartOverOrCountFromTheSongWhenAKeyGoesDown)
{
    Sources tree;
    for (const int i : {1, 2}) {
        tree.makeTriangle(tree.parameters.xlfos[i], 1.0f);
        tree.deliver(tree.parameters.xlfos[i].syncMode, 5.0f);  // a whole note
    }
    tree.deliver(tree.parameters.xlfos[1].midiTrigger, 1.0f);
    tree.sources->transportChanged(120.0f, 17.0);  // a quarter into a cycle
    EXPECT_NEAR(tree.shownAfter(1, 1), 0.5, 1e-4);
    EXPECT_NEAR(tree.shownAfter(1, 2), 0.5, 1e-4);
    tree.sources->noteOn();
    tree.sources->transportChanged(120.0f, 18.0);
    EXPECT_NEAR(tree.shownAfter(1, 1), 0.0, 1e-4);
    EXPECT_NEAR(tree.shownAfter(1, 2), 1.0, 1e-4);
    tree.sources->transportChanged(120.0f, 19.0);
    EXPECT_NEAR(tree.shownAfter(1, 1), 0.5, 1e-4);
    tree.deliver(tree.parameters.xlfos[1].midiTrigger, 0.0f);
    tree.sources->noteOn();
    tree.sources->transportChanged(120.0f, 22.0);
    EXPECT_NEAR(tree.shownAfter(1, 1), 1.0, 1e-4);
    // Half as long again: two beats.
    tree.deliver(tree.parameters.xlfos[1].frequencyOffset, 1.0f);
    tree.shownAfter(8000, 1);
    tree.sources->transportChanged(120.0f, 24.5);
    EXPECT_NEAR(tree.shownAfter(1, 1), 0.5, 1e-4);
}

TEST(XLFOSources, ReachByOctavesWhereTheySnap)
{
    Sources tree;
    XLFOParameterSet& set = tree.parameters.xlfos[4];
    tree.deliver(set.steps.numActive, 1.0f);
    tree.deliver(set.steps[0].value, 0.3f);
    constexpr int cutOff = SordelinTargets::filterFrequency(1);
    tree.matrix->target(cutOff).setParameterSignal(9.0f);
    tree.matrix->setSlotLevel(7, 0.5f);
    tree.matrix->setSlotSource(7, SordelinSources::xlfo(4));
    tree.matrix->setSlotTarget(7, cutOff);
    const auto settled = [&] { return tree.render(*tree.matrix->producerForTarget(cutOff), 1000).back(); };
    EXPECT_NEAR(settled(), 9.0 + 4.2 * 0.5 * 0.3, 1e-5);
    tree.deliver(set.snap, 1.0f);
    EXPECT_NEAR(settled(), 9.0 + 0.5 * 4.0 / 12.0, 1e-5);  // 0.3 is nearest to a third
    tree.deliver(set.snap, 0.0f);
    EXPECT_NEAR(settled(), 9.0 + 4.2 * 0.5 * 0.3, 1e-5);
    // All of them at once, as after a preset.
    set.snap.setValue(1.0f, noEcho);
    tree.sources->parameterApplied(-1);
    EXPECT_NEAR(settled(), 9.0 + 0.5 * 0.3, 1e-5);
}

TEST(XLFOSources, AreSilentWhereTheyAreNotInUse)
{
    Sources tree;
    tree.deliver(tree.parameters.xlfos[3].steps[0].value, 0.5f);
    tree.deliver(tree.parameters.xlfos[3].steps[1].value, 0.5f);
    constexpr int pan = SordelinTargets::wetPan;
    tree.connect(3, pan);
    const auto settled = [&] { return tree.render(*tree.matrix->producerForTarget(pan), 1000).back(); };
    EXPECT_NEAR(settled(), 0.5, 1e-5);
    tree.deliver(tree.parameters.xlfos.numActive, 3.0f);
    EXPECT_EQ(settled(), 0.0f);
    tree.deliver(tree.parameters.xlfos.numActive, 4.0f);
    EXPECT_NEAR(settled(), 0.5, 1e-5);
}

TEST(XLFOSources, KeepMovingWhenTheSongStops)
{
    SordelinProcessor processor;
    const auto set = [](AbstractPluginParameter& parameter, float value) {
        parameter.setValue(value, announceChange);
    };
    XLFOParameterSet& xlfo = processor.xlfos[0];
    set(processor.xlfos.numActive, 1.0f);
    set(xlfo.steps[0].value, -1.0f);
    set(xlfo.steps[1].value, 1.0f);
    set(xlfo.steps[0].glide, 1.0f);
    set(xlfo.steps[1].glide, 1.0f);
    set(xlfo.syncMode, 5.0f);
    const std::array<const float*, 4> inputs{};
    std::array<float, 441> left{}, right{};
    const std::array outputs{left.data(), right.data()};
    for (int block = 0; block < 300; ++block) {
        const bool playing = block < 100;
        // 0.02 beats a block; the host stays where it stopped.
        processor.updateTransport(120.0f, 0.02 * std::min(block, 99), playing);
        unsigned status = 0;
        processor.process(inputs.data(), 4, outputs.data(), 2, 441, status);
        const double phase = std::fmod((0.02 * block + 384.0 / 22050.0) / 4.0, 1.0);
        ASSERT_NEAR(processor.modulationSourceValue(SordelinSources::xlfo(0)),
                    1.0 - std::fabs(1.0 - 2.0 * phase), 1e-4)
            << block;
    }
}
