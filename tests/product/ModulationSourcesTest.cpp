#include "product/EnvelopeSources.h"
#include "product/MidiSources.h"
#include "product/SordelinModulationIds.h"
#include "product/SordelinProcessor.h"

#include "support/GraphFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

/// Plays constants into the inputs and the side chain.
struct Engine {
    Engine() { processor.inputsConnected = true; }
    void set(AbstractPluginParameter& parameter, float value) { parameter.setValue(value, announceChange); }
    void play(int blocks, float main, float sideChain)
    {
        std::array<float, 128> in{}, side{}, left{}, right{};
        in.fill(main);
        side.fill(-sideChain);
        const std::array<const float*, 4> inputs{in.data(), in.data(), side.data(), side.data()};
        const std::array outputs{left.data(), right.data()};
        for (int i = 0; i < blocks; ++i) {
            unsigned status = 0;
            processor.process(inputs.data(), 4, outputs.data(), 2, 128, status);
        }
    }
    float generator(int number)
    {
        return processor.modulationSourceValue(SordelinSources::envelopeGenerator(number));
    }
    float follower(int number)
    {
        return processor.modulationSourceValue(SordelinSources::envelopeFollower(number));
    }

    SordelinProcessor processor;
};

}  // namespace

TEST(EnvelopeSources, ListenToWhatTheyAreSetTo)
{
    Engine engine;
    SordelinProcessor& tree = engine.processor;
    for (const auto triggering : {Triggering::NormalInput, Triggering::SideChain, Triggering::Midi})
        engine.set(tree.envelopeGenerators[static_cast<int>(triggering)].triggering,
                   static_cast<float>(triggering));
    engine.set(tree.envelopeFollowers[1].input, 1.0f);
    for (AbstractPluginParameter* used :
         {&tree.envelopeGenerators.numActive, &tree.envelopeFollowers.numActive})
        engine.set(*used, 3.0f);
    struct Row {
        float main, sideChain, generators[3], followers[2];
    };
    // The threshold is -24 dB. A level of 0.1 lies 40 of 60 dB above the followers' floor.
    for (const auto& [main, sideChain, generators, followers] :
         {Row{0.0f, 0.0f, {0, 0, 0}, {0.0f, 0.0f}}, Row{0.1f, 0.01f, {1, 0, 0}, {2.0f / 3.0f, 1.0f / 3.0f}},
          Row{0.01f, 0.1f, {0, 1, 0}, {1.0f / 3.0f, 2.0f / 3.0f}}, Row{1.0f, 1.0f, {1, 1, 0}, {1.0f, 1.0f}},
          Row{0.0f, 0.0f, {0, 0, 0}, {0.0f, 0.0f}}}) {
        engine.play(400, main, sideChain);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(engine.generator(i), generators[i], 1e-5) << i << " at " << main << ", " << sideChain;
        for (int i = 0; i < 2; ++i)
            EXPECT_NEAR(engine.follower(i), followers[i], 1e-3) << i << " at " << main << ", " << sideChain;
    }
    // The fourth isn't in use.
    engine.play(100, 1.0f, 1.0f);
    EXPECT_EQ(engine.generator(3), 0.0f);
    EXPECT_EQ(engine.follower(3), 0.0f);
    // Another choice closes the gate.
    engine.set(tree.envelopeGenerators[0].triggering, static_cast<float>(Triggering::Midi));
    engine.play(100, 1.0f, 1.0f);
    EXPECT_EQ(engine.generator(0), 0.0f);
}

TEST(EnvelopeSources, TakeThresholdsTimesAndLevelsFromTheParameters)
{
    Engine engine;
    EGParameterSet& generator = engine.processor.envelopeGenerators[0];
    engine.set(engine.processor.envelopeGenerators.numActive, 1.0f);
    engine.set(generator.threshold, generator.threshold.signalToValue(0.5f));
    engine.set(generator.sustain, 0.25f);
    for (auto* time :
         {&generator.attack, &generator.decay, &generator.release, &generator.hold, &generator.delay})
        engine.set(*time, time->signalToValue(0.1f));
    engine.play(100, 0.45f, 0.0f);
    EXPECT_EQ(engine.generator(0), 0.0f);
    struct Row {
        int blocks;  // 34.4 are 0.1 s
        float main, low, high;
    };
    for (const auto& [blocks, main, low, high] : {Row{34, 0.6f, 0.0f, 0.0f},    // delay
                                                  Row{17, 0.6f, 0.5f, 0.7f},    // attack
                                                  Row{22, 0.6f, 0.78f, 0.81f},  // decay, 520 of 4410 samples
                                                  Row{60, 0.6f, 0.25f, 0.25f},  // sustain
                                                  Row{35, 0.0f, 0.25f, 0.25f},  // 15 ms of waiting, and hold
                                                  Row{15, 0.0f, 0.02f, 0.2f},   // release
                                                  Row{40, 0.0f, 0.0f, 0.0f}}) {
        engine.play(blocks, main, 0.0f);
        EXPECT_GE(engine.generator(0), low - 1e-5f);
        EXPECT_LE(engine.generator(0), high + 1e-5f);
    }
}

namespace {

/// A second set of sources that follow a processor's parameters, whose notes are the test's.
struct Sources {
    Sources()
    {
        for (int i = 0; i < SordelinLimits::envelopeGenerators; ++i)
            matrix.target(SordelinTargets::generatorSustain(i)).setParameterSignal(1.0f);
        processor.envelopeGenerators[0].triggering.setValue(2.0f, announceChange);
        processor.envelopeGenerators[1].triggering.setValue(2.0f, announceChange);
        envelopes.parameterApplied(-1);
    }
    void run()
    {
        for (int i = 0; i < 4; ++i) {
            processor.engine().nextGeneration();
            processor.engine().run(128, false);
        }
    }
    /// Whether the first three generators are open.
    std::array<bool, 3> open()
    {
        run();
        std::array<bool, 3> result{};
        for (int i = 0; i < 3; ++i)
            result[static_cast<std::size_t>(i)] =
                envelopes.displayValue(SordelinSources::envelopeGenerator(i)) > 0.5f;
        return result;
    }

    SordelinProcessor processor;
    ModulationMatrix matrix{processor.engine(), processor.configuration};
    FunctionProducer silence{processor.engine(), [](std::uint64_t) { return 0.0f; }};
    EnvelopeSources envelopes{processor.engine(),
                              matrix,
                              processor.envelopeGenerators,
                              processor.envelopeFollowers,
                              {silence, silence}};
};

}  // namespace

TEST(EnvelopeSources, StayOpenUntilTheLastNoteEnds)
{
    using Open = std::array<bool, 3>;
    constexpr Open all{true, true, false}, none{};  // the third isn't played by notes
    struct Step {
        const char* what;
        std::function<void(EnvelopeSources&)> act;
        Open open;
    };
    const Step steps[] = {
        {"a note", [](auto& played) { played.noteOn(60); }, all},
        {"a second", [](auto& played) { played.noteOn(64); }, all},
        {"the first ends", [](auto& played) { played.noteOff(60); }, all},
        {"so does the second", [](auto& played) { played.noteOff(64); }, none},
        {"one too many", [](auto& played) { played.noteOff(64); }, none},
        {"again a note", [](auto& played) { played.noteOn(60); }, all},
        {"and a second", [](auto& played) { played.noteOn(64); }, all},
        {"all notes end", [](auto& played) { played.noteOff(0); }, none},
        {"a note counts from 1", [](auto& played) { played.noteOn(60); }, all},
        {"key 0 lets all go", [](auto& played) { played.noteOn(0); }, none},
        {"nothing is held", [](auto& played) { played.noteOff(60); }, none},
        {"a note of no length", [](auto& played) { played.noteOn(60), played.noteOff(60); }, none},
    };
    Sources sources;
    for (const Step& step : steps) {
        step.act(sources.envelopes);
        EXPECT_EQ(sources.open(), step.open) << step.what;
    }
}

TEST(MidiSources, FollowTheirParameters)
{
    Sources sources;
    MidiSourceParameterSetList& sets = sources.processor.midiSources;
    MidiSources midi(sources.processor.engine(), sources.matrix, sets);
    const auto shown = [&](int source) { return midi.displayValue(SordelinSources::midi(source)); };
    const auto deliver = [](AbstractPluginParameter& parameter, float value) {
        parameter.deliverValue(value);
    };
    deliver(sets[1].input, 2.0f);  // velocity
    EXPECT_EQ(shown(1), 0.5f);     // as if a note had been played
    deliver(sets[2].input, 5.0f);
    deliver(sets[2].controllerNumber, 74.0f);
    deliver(sets[2].responseCurve, 3.0f);
    midi.listener().modWheel(0.25f);
    midi.listener().controller(74, 64, 0.5f);
    EXPECT_EQ(shown(0), 0.25f);
    EXPECT_EQ(shown(2), 0.25f);
    EXPECT_EQ(shown(9), 0.25f);
}
