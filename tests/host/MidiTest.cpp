// MIDI through the built module: controllers that a user's file maps move parameters, and the host hears.
#include "PluginPlayer.h"
#include "support/ControllerMapFile.h"

#include <gtest/gtest.h>

#include <array>

namespace {

constexpr clap_id filter1Freq = 18, filter2Freq = 25, dryLevel = 34, wetPan = 37, receiveMidi = 580;
constexpr std::int32_t linkedFreq = 0x100000;

/// One instance in a home with a controller map, and a block of it.
struct MappedInstance {
    /// @param controller  moves `target`; no other moves anything
    MappedInstance(int controller, std::int32_t target)
    {
        writeControllerMap(home.productData(), controllerMapBytes({{controller, target}}));
        instance = std::make_unique<ClapInstance>(module);
        instance->activate(48000.0, 1, frames);
        instance->startProcessing();
    }
    /// Runs a block of ones with `events`; afterwards `sent` is what the host was told, and `left` the sound.
    void run(const std::vector<ClapEvent>& events)
    {
        EventList list;
        for (const ClapEvent& event : events)
            list.add(event);
        sent.clear();
        std::array in{ones.data(), ones.data()};
        std::array out{left.data(), right.data()};
        const std::array inputs{clap_audio_buffer_t{in.data(), nullptr, 2, 0, 0}};
        std::array outputs{clap_audio_buffer_t{out.data(), nullptr, 2, 0, 0}};
        ClapBlock block;
        block.inputs = inputs;
        block.outputs = outputs;
        block.frames = frames;
        block.events = &list;
        block.output = &sent;
        instance->process(block);
    }
    double value(clap_id id) { return instance->parameters().value(id); }

    static constexpr std::uint32_t frames = 256;
    const TemporaryHome home;
    const ClapModule module{SORDELIN_MODULE};
    std::unique_ptr<ClapInstance> instance;
    EventOutput sent;
    std::vector<float> ones = std::vector<float>(frames, 1.0f), left = ones, right = ones;
};

}  // namespace

TEST(Midi, AMappedControllerMovesItsParameterAndTheHostHearsInTheSameBlock)
{
    MappedInstance mapped(20, wetPan);
    mapped.run({midiEvent(100, 0xB5, 20, 127), midiEvent(100, 0xB5, 21, 127)});
    EXPECT_EQ(mapped.value(wetPan), 1.0);
    ASSERT_EQ(mapped.sent.events().size(), 1u);
    const clap_event_param_value_t& told = mapped.sent.events()[0].parameter;
    EXPECT_EQ(told.header.type, CLAP_EVENT_PARAM_VALUE);
    EXPECT_EQ(told.param_id, wetPan);
    EXPECT_EQ(told.value, 1.0);
    mapped.run({midiEvent(0, 0xB5, 20, 0), midiEvent(200, 0xB0, 20, 127)});
    EXPECT_EQ(mapped.sent.events().size(), 2u);
    EXPECT_TRUE(mapped.sent.inOrder());
    mapped.run({midiEvent(0, 0xB5, 20, 127)});  // no change
    EXPECT_TRUE(mapped.sent.events().empty());
    EXPECT_TRUE(mapped.instance->host().violations().empty());
}

TEST(Midi, IsHeardFromItsSampleOn)
{
    MappedInstance mapped(20, dryLevel);
    mapped.run({});
    mapped.run({midiEvent(100, 0xB0, 20, 0)});
    EXPECT_EQ(mapped.left[99], 1.0f);
    EXPECT_LT(mapped.left[101], 1.0f);  // the level glides down from there
    EXPECT_LT(mapped.left[255], mapped.left[101]);
}

TEST(Midi, KeepsTheDistanceOfLinkedFilters)
{
    MappedInstance mapped(20, linkedFreq);
    mapped.run({parameterEvent(0, filter1Freq, 0.4), parameterEvent(0, filter2Freq, 0.6)});
    mapped.run({midiEvent(1, 0xB0, 20, 127), midiEvent(2, 0xB0, 20, 0), midiEvent(3, 0xB0, 20, 64)});
    EXPECT_NEAR(mapped.value(filter1Freq), 64.0 / 127.0 - 0.1, 1e-6);
    EXPECT_NEAR(mapped.value(filter2Freq), 64.0 / 127.0 + 0.1, 1e-6);
}

TEST(Midi, LetsNothingInWhileItIsSwitchedOff)
{
    MappedInstance mapped(20, wetPan);
    mapped.run({parameterEvent(0, receiveMidi, 1.0)});
    mapped.run({midiEvent(0, 0xB0, 20, 127)});
    EXPECT_EQ(mapped.value(wetPan), 0.0);
    mapped.run({parameterEvent(0, receiveMidi, 0.0), midiEvent(0, 0xB0, 20, 127)});
    EXPECT_EQ(mapped.value(wetPan), 1.0);
}

TEST(Midi, WritesNothingButPresetsIntoTheUsersHomeByItself)
{
    const TemporaryHome home;
    {
        const ClapModule module(SORDELIN_MODULE);
        ClapInstance instance(module);
        instance.activate(48000.0, 1, 512);
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home.folder / "")) {
        if (!entry.is_directory()) {
            EXPECT_NE(entry.path().string().find("/Morvelane/"), std::string::npos) << entry.path();
            EXPECT_NE(entry.path().string().find("Presets/"), std::string::npos) << entry.path();
        }
    }
}
