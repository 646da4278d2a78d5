#include "MidiRecorder.h"
#include "TestProcessor.h"
#include "core/MidiMultiVirtualPluginParameter.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Log = std::vector<std::pair<char, int>>;

const std::vector<float> ones(512, 1.0f);

struct ControllerRecorder : GenericPluginProcessor::ProcessorAdapter {
    void controllerActivity(int controller) noexcept override { controllers.push_back(controller); }
    void parameterChangedByProcessor(int index) noexcept override { changed.push_back(index); }
    void programChange(int bank, int program) noexcept override { programs.push_back({bank, program}); }
    std::vector<int> controllers;
    std::vector<int> changed;
    std::vector<std::pair<int, int>> programs;
};

}  // namespace

TEST(GenericPluginProcessor, SplitsARunAtItsMessagesAndAtTheEnginesBlock)
{
    TestProcessor processor;
    ControllerRecorder adapter;
    processor.setAdapter(&adapter);
    processor.queueMidi({0x90, 60, 100, 200});
    processor.queueMidi({0x90, 61, 100, 600});  // beyond the run: after it
    processor.play(ones);
    EXPECT_EQ(processor.log,
              (Log{{'e', 128}, {'e', 72}, {'m', 60}, {'e', 128}, {'e', 128}, {'e', 56}, {'m', 61}}));
    EXPECT_EQ(adapter.controllers, std::vector<int>{-1});
    processor.play(ones);
    EXPECT_EQ(adapter.controllers.size(), 1u);  // nothing was decoded
}

TEST(GenericPluginProcessor, AppliesWhatAMessageMovedFromItsSampleOn)
{
    TestProcessor processor;
    processor.gainByMidi = true;
    processor.gain.setValue(0.5f, noEcho);
    processor.queueMidi({0x90, 60, 100, 200});
    const std::vector<float> out = processor.play(ones);
    EXPECT_EQ(out[0], 0.5f);
    EXPECT_EQ(out[199], 0.5f);
    EXPECT_EQ(out[200], 0.25f);
}

TEST(GenericPluginProcessor, HoldsABatchBackUntilItsEnd)
{
    TestProcessor processor;
    processor.beginParameterBatch();
    processor.gain.setValue(0.5f, noEcho);
    processor.bypass.setValue(1.0f, noEcho);
    EXPECT_EQ(processor.play(ones)[0], 1.0f);
    processor.endParameterBatch();
    processor.log.clear();
    EXPECT_EQ(processor.play(ones)[0], 0.5f);
    EXPECT_EQ(processor.log.front(), (std::pair<char, int>{'p', processor.gain.index()}));
}

TEST(GenericPluginProcessor, TakesChangesInARunOfNoSamples)
{
    TestProcessor processor;
    processor.gain.setValue(0.5f, noEcho);
    processor.queueMidi({0x90, 60, 100, 0});
    processor.play({}, 1);
    float none = 0.0f;
    const float* inputs[] = {&none, &none};
    float* outputs[] = {&none, &none};
    processor.process(inputs, 2, outputs, 2, 0, processor.status);
    EXPECT_EQ(processor.log, (Log{{'p', processor.gain.index()}, {'m', 60}}));
}

TEST(GenericPluginProcessor, TellsTheOtherHalfOfItsOwnChangesOnly)
{
    TestProcessor processor;
    ControllerRecorder adapter;
    processor.setAdapter(&adapter);
    processor.gain.setValue(0.5f, noEcho);
    EXPECT_TRUE(adapter.changed.empty());
    processor.gain.setValue(0.75f, announceChange);
    EXPECT_EQ(adapter.changed, std::vector<int>{processor.gain.index()});
}

TEST(GenericPluginProcessor, LosesNoValueWhenItsQueueOverflows)
{
    TestProcessor processor;
    for (int i = 0; i < 70000; ++i)
        processor.gain.setValue(i % 2 ? 0.25f : 0.75f, noEcho);
    processor.bypass.setValue(1.0f, noEcho);
    processor.gain.setValue(0.125f, noEcho);
    processor.applyQueuedChanges();
    EXPECT_EQ(processor.wetGain, 0.125f);
    EXPECT_EQ(processor.log.back(), (std::pair<char, int>{'p', processor.bypass.index()}));
}

TEST(GenericPluginProcessor, EndsWithTheValueThatHoldsWhenTwoThreadsSetOne)
{
    // The other thread comes between this one's store and its message, and overtakes it.
    struct Overtaken : TestProcessor {
        void parameterValueChanged(int index, float value, int changeFlags) noexcept override
        {
            if (value == 0.75f)
                gain.setValue(0.25f, noEcho);
            TestProcessor::parameterValueChanged(index, value, changeFlags);
        }
    } processor;
    struct Engine final : ParameterListener {
        void parameterDelivered(AbstractPluginParameter&, float value) noexcept override
        {
            delivered = value;
        }
        float delivered = -1.0f;
    } engine;
    processor.gain.addListener(engine);
    processor.gain.setValue(0.75f, noEcho);
    processor.play(ones);
    EXPECT_EQ(processor.gain.currentValue(), 0.25f);
    EXPECT_EQ(engine.delivered, 0.25f);
}

TEST(GenericPluginProcessor, KeepsTheBeatRunningInAStoppedSong)
{
    struct Clocked : TestProcessor {
        void transportChanged(float, double beats) noexcept override { seen = beats; }
        double seen = -1.0;
    } processor;
    const auto advance = [&](float tempo, double position, bool playing) {
        processor.updateTransport(tempo, position, playing);
        processor.play(std::vector<float>(441, 0.0f));
        return processor.seen;
    };
    EXPECT_EQ(advance(120.0f, 17.0, true), 17.0);
    EXPECT_EQ(advance(120.0f, 17.02, true), 17.02);
    EXPECT_EQ(advance(120.0f, 7200.0001, true), 7200.0001);  // an hour in, finer than a float
    EXPECT_EQ(advance(120.0f, 17.02, true), 17.02);
    // 441 samples at 44.1 kHz and 120 beats per minute are 0.02 beats.
    EXPECT_NEAR(advance(120.0f, 17.02, false), 17.04f, 1e-5);
    EXPECT_NEAR(advance(120.0f, 17.02, false), 17.06f, 1e-5);
    EXPECT_EQ(advance(0.0f, 255.99, false), 255.99);         // the song was moved
    EXPECT_NEAR(advance(0.0f, 255.99, false), 0.01f, 1e-4);  // no tempo is 120; 256 beats is 0
    processor.reset();
    EXPECT_NEAR(advance(120.0f, 255.99, false), 0.0f, 1e-6);
}

TEST(GenericPluginProcessor, TellsWhichControllerAndWhichProgramCame)
{
    TestProcessor processor;
    ControllerRecorder adapter;
    processor.setAdapter(&adapter);
    processor.queueMidi({0xB0, 7, 100, 0});
    processor.queueMidi({0xB2, 74, 1, 9});
    processor.play(ones);
    processor.queueMidi({0x90, 60, 100, 0});  // the controllers of the last run are forgotten
    processor.play(ones);
    processor.queueMidi({0xB0, 32, 3, 0});
    processor.queueMidi({0xC0, 9, 0, 0});
    processor.play(ones);
    EXPECT_EQ(adapter.controllers, (std::vector<int>{74, -1, -1}));
    EXPECT_EQ(adapter.programs, (std::vector<std::pair<int, int>>{{3, 9}}));
}

TEST(GenericPluginProcessor, PlaysNotesBeforeItsListenersHearAndLetsGoWhenMidiIsSwitchedOff)
{
    struct Player : TestProcessor {
        Player() { midiStateParameter = &midiState; }
        void noteOn(int key, float) noexcept override { notes.add("engine on %d", key); }
        void noteOff(int key, float velocity) noexcept override
        {
            notes.add("engine off %d %d", key, MidiRecorder::thousandths(velocity));
        }
        IndexedPluginParameter<MidiState> midiState{this, "Midi State"};
        MidiRecorder notes;
    } processor;
    constexpr std::string_view items[] = {"Disabled", "Enabled"};
    processor.midiState.setItems(items, GenericPluginBase::MidiState::Disabled);
    processor.musicEvents().channel(0)->addListener(processor.notes);
    processor.queueMidi({0x90, 60, 127, 0});
    processor.queueMidi({0x80, 60, 0, 1});
    processor.play(ones);
    processor.midiState.setValue(1.0f, noEcho);
    processor.play(ones);
    processor.midiState.setValue(0.0f, noEcho);
    processor.play(ones);
    EXPECT_EQ(processor.notes.heard,
              (std::vector<std::string>{"engine on 60", "on 60 1000", "engine off 60 0", "off 60 0",
                                        "engine off 0 1000"}));
}

TEST(GenericPluginProcessor, MovesWhatAControllerIsMappedToBeforeListenersHear)
{
    struct : MidiRecorder {
        void controller(int, int, float) noexcept override { gain = processor->gain.currentValue(); }
        TestProcessor* processor;
        float gain = -1.0f;
    } listener;
    TestProcessor processor;
    ControllerRecorder adapter;
    processor.setAdapter(&adapter);
    processor.gain.setValue(0.5f, noEcho);
    listener.processor = &processor;
    processor.musicEvents().channel(0)->addListener(listener);
    processor.controllerMapping().assign(1, processor.gain.index());
    processor.queueMidi({0xB0, 1, 0, 300});
    const std::vector<float> out = processor.play(ones);
    EXPECT_EQ(listener.gain, 0.0f);
    EXPECT_EQ(adapter.changed, std::vector<int>{processor.gain.index()});
    EXPECT_EQ(out[299], 0.5f);
    EXPECT_EQ(out[300], 0.0f);
}

TEST(GenericPluginProcessor, IgnoresTargetsThatThereAreNot)
{
    TestProcessor processor;
    ControllerRecorder adapter;
    processor.setAdapter(&adapter);
    for (std::int32_t target : {2, 704, 0xFFFFF, 0x100000, 0x7FFFFFFF, -2, -0x7FFFFFFF}) {
        processor.controllerMapping().assign(7, target);
        processor.queueMidi({0xB0, 7, 100, 0});
        processor.play(ones);
        EXPECT_TRUE(adapter.changed.empty()) << target;
    }
    EXPECT_EQ(adapter.controllers.back(), 7);
}

TEST(GenericPluginProcessor, HandsAVirtualTargetTheController)
{
    TestProcessor processor;
    MidiMultiVirtualPluginParameter link(processor, "Link");
    link.addParameter(processor.gain);
    processor.controllerMapping().assign(7, link.index());
    processor.queueMidi({0xB0, 7, 127, 0});
    processor.queueMidi({0xB0, 7, 0, 100});
    const std::vector<float> out = processor.play(ones);
    EXPECT_NEAR(out[0], 1.0f, 1e-6);
    EXPECT_EQ(out[100], 0.0f);
}
