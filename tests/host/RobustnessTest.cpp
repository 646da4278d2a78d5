#include "PluginPlayer.h"
#include "support/ControllerMapFile.h"
#include "support/Signals.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cmath>
#include <limits>
#include <memory>
#include <thread>

namespace {

/// Buffers of one block, for calls that no orderly host makes.
struct RawBlock {
    explicit RawBlock(std::uint32_t frames = 512, float value = 0.5f)
        : left(frames, value), right(frames, value), outLeft(frames, 9.0f), outRight(frames, 9.0f)
    {
        block.inputs = std::span(inputs).first(1);
        block.outputs = outputs;
        block.frames = frames;
        block.events = &events;
    }

    std::vector<float> left, right, outLeft, outRight;
    std::array<float*, 2> in{left.data(), right.data()};
    std::array<float*, 2> out{outLeft.data(), outRight.data()};
    std::array<clap_audio_buffer_t, 1> inputs{clap_audio_buffer_t{in.data(), nullptr, 2, 0, 0}};
    std::array<clap_audio_buffer_t, 1> outputs{clap_audio_buffer_t{out.data(), nullptr, 2, 0, 0}};
    EventList events;
    ClapBlock block;
};

struct Instance {
    explicit Instance(std::uint32_t extensions = HostExtensions::all) : instance(module, extensions) {}
    void start(double rate = 48000.0, std::uint32_t frames = 4096)
    {
        instance.activate(rate, 1, frames);
        instance.startProcessing();
    }
    ClapModule module{SORDELIN_MODULE};
    ClapInstance instance;
};

}  // namespace

TEST(Robustness, StartsWithEverySubsetOfHostExtensions)
{
    for (std::uint32_t offered = 0; offered <= HostExtensions::all; ++offered) {
        Instance plain(offered);
        plain.start();
        RawBlock raw;
        plain.instance.process(raw.block);
        EXPECT_EQ(raw.outLeft[511], 0.5f);
        EXPECT_TRUE(plain.instance.host().violations().empty());
    }
}

TEST(Robustness, PlaysOnAnyPortListWithoutTransport)
{
    Instance plain;
    plain.start();
    RawBlock raw;
    plain.instance.process(raw.block);  // no side chain, no transport
    EXPECT_EQ(raw.outLeft[0], 0.5f);

    raw.block.inputs = {};
    plain.instance.process(raw.block);
    EXPECT_EQ(raw.outLeft[0], 0.0f);

    raw.in[1] = nullptr;  // one channel is missing
    raw.block.inputs = raw.inputs;
    plain.instance.process(raw.block);
    EXPECT_EQ(raw.outLeft[0], 0.5f);
    EXPECT_EQ(raw.outRight[0], 0.0f);

    raw.inputs[0].data32 = nullptr;  // doubles only, which the ports never offered
    plain.instance.process(raw.block);
    raw.outputs[0].data32 = nullptr;
    plain.instance.process(raw.block);
    raw.block.outputs = {};
    plain.instance.process(raw.block);
}

TEST(Robustness, TakesBlocksOfNoFramesWithTheirEvents)
{
    Instance plain;
    plain.start();
    RawBlock raw;
    plain.instance.process(raw.block);
    RawBlock none(0);
    none.events.add(parameterEvent(0, 37, -0.5));  // "Wet Pan"
    plain.instance.process(none.block);
    EXPECT_EQ(plain.instance.parameters().value(37), -0.5);
    plain.instance.process(raw.block);
    EXPECT_EQ(raw.outLeft[511], 0.5f);
}

TEST(Robustness, IgnoresEventsThatAreOutOfRange)
{
    Instance plain;
    plain.start();
    RawBlock raw;
    raw.events.add(parameterEvent(0, 705, 1.0));
    raw.events.add(parameterEvent(0, CLAP_INVALID_ID, 1.0));
    raw.events.add(parameterEvent(0, 37, std::numeric_limits<double>::quiet_NaN()));
    raw.events.add(parameterEvent(10, 34, 7.0));  // beyond its range: "Dry Level" stays at the top
    raw.events.add(noteOnEvent(20, 0, 60, 2.0));
    ClapEvent strange = noteOnEvent(30, 0, 60, 1.0);
    strange.note.key = -1;
    raw.events.add(strange);
    strange = parameterEvent(40, 37, 1.0);
    strange.header.space_id = 7;
    raw.events.add(strange);
    strange = parameterEvent(50, 37, 1.0);
    strange.header.size = sizeof(clap_event_header_t);
    raw.events.add(strange);
    raw.events.add(parameterEvent(4000, 37, 1.0));  // behind the block's end
    plain.instance.process(raw.block);
    EXPECT_EQ(plain.instance.parameters().value(37), 0.0);
    EXPECT_EQ(plain.instance.parameters().value(34), 1.0);
    EXPECT_EQ(raw.outLeft[511], 0.5f);
}

TEST(Robustness, LosesNoValueToAHostThatTakesFewAtATime)
{
    const TemporaryHome home;
    writeControllerMap(home.productData(), controllerMapBytes({{20, 0}, {21, 1}, {22, 2}, {23, 3}, {24, 4}}));
    Instance plain;
    plain.start();
    RawBlock raw;
    for (std::uint8_t controller = 20; controller < 25; ++controller)
        raw.events.add(midiEvent(controller, 0xB0, controller, 127));
    EventOutput two(2);
    raw.block.output = &two;
    plain.instance.process(raw.block);
    std::vector<clap_id> told;
    for (int call = 0; call < 4; ++call) {
        for (const ClapEvent& event : two.events())
            told.push_back(event.parameter.param_id);
        two.clear();
        plain.instance.flush(EventList(0), &two);
    }
    EXPECT_EQ(told, (std::vector<clap_id>{0, 1, 2, 3, 4}));
}

TEST(Robustness, WritesOverItsInputs)
{
    PluginPlayer apart, inPlace;
    for (PluginPlayer* player : {&apart, &inPlace}) {
        player->set("Delay 1 Time", "20 ms");
        player->set("Channel Mode", "Mid/Side");
        player->set("Delay 1 Feedback", "0.5");
    }
    std::vector<float> left = signals::noise(10000, 20), right = signals::noise(10000, 21);
    const auto expected = apart.play(left, right);
    inPlace.renderer().render({left.data(), right.data()}, {}, left.data(), right.data(), 10000);
    EXPECT_EQ(left, expected.first);
    EXPECT_EQ(right, expected.second);
}

TEST(Robustness, LetsNoNumberOutThatIsNoneAndRecovers)
{
    using Limits = std::numeric_limits<float>;
    PluginPlayer player;
    player.disableFilters();
    player.set("Delay 1 Time", "10 ms");
    player.set("Delay 1 Feedback", "2.0");
    player.set("Delay 1 Cross Feedback", "1.0");
    player.set("Delay 2 Cross Feedback", "1.0");
    player.set("Delay 2 Feedback", "2.0");
    std::vector<float> wild = signals::noise(48000, 22);
    const float strange[] = {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), Limits::max(),
                             Limits::denorm_min()};
    for (std::size_t i = 0; i < wild.size(); i += 7)
        wild[i] = strange[i % 5];
    for (int second = 0; second < 20; ++second) {
        const std::vector<float> out = player.play(wild);
        for (float sample : out)
            ASSERT_TRUE(std::isfinite(sample) && (sample == 0.0f || std::fabs(sample) >= Limits::min()));
    }
    // The loop is opened, and what comes is clean again.
    player.set("Delay 1 Feedback", "0");
    player.set("Delay 2 Feedback", "0");
    player.set("Delay 1 Cross Feedback", "0");
    player.set("Delay 2 Cross Feedback", "0");
    player.play(std::vector<float>(48000, 0.0f));
    EXPECT_EQ(player.play(std::vector<float>(4800, 0.0f)), std::vector<float>(4800, 0.0f));
}

TEST(Robustness, TellsTheTruthAboutSilence)
{
    Instance plain;
    plain.start();
    RawBlock silence(512, 0.0f);
    silence.inputs[0].constant_mask = 3;
    plain.instance.process(silence.block);  // asleep
    EXPECT_EQ(silence.outputs[0].constant_mask & 3, 3u);
    EXPECT_EQ(silence.outLeft, std::vector<float>(512, 0.0f));
    RawBlock sound;
    plain.instance.process(sound.block);
    EXPECT_EQ(sound.outputs[0].constant_mask, 0u);
    plain.instance.process(silence.block);  // echoes are to come
    EXPECT_EQ(silence.outputs[0].constant_mask, 0u);
    silence.outputs[0].channel_count = 1;  // and of a port that isn't ours nothing is known
    silence.outputs[0].constant_mask = 3;
    plain.instance.process(silence.block);
    EXPECT_EQ(silence.outputs[0].constant_mask, 0u);
}

TEST(Robustness, StartsAnewAtEverySampleRate)
{
    Instance plain;
    for (double rate : {44100.0, 8000.0, 768000.0, 44055.94, 96000.0, 96000.0, 11025.0}) {
        plain.start(rate);
        const auto delay = static_cast<std::size_t>(0.00999 * rate);
        EventList events;
        const ClapParameters& parameters = plain.instance.parameters();
        events.add(parameterEvent(0, 0, parameters.fromText(0, "10 ms").value()));
        events.add(parameterEvent(0, 7, parameters.fromText(7, "10 ms").value()));
        events.add(parameterEvent(0, 24, 0.0));  // no filters
        events.add(parameterEvent(0, 31, 0.0));
        plain.instance.flush(events);
        RawBlock raw(4096, 0.0f);
        raw.left[0] = 1.0f;
        plain.instance.process(raw.block);
        // Nothing of the last rate, and the one echo where it belongs, if that still is in this block.
        std::size_t heard = 0;
        for (std::size_t i = 1; i < 4096; ++i)
            heard += raw.outLeft[i] != 0.0f ? i : 0;
        EXPECT_NEAR(static_cast<double>(heard), delay < 4096 ? 0.01 * rate : 0.0, 1.0) << rate;
        plain.instance.stopProcessing();
        plain.instance.deactivate();
    }
}

TEST(Robustness, StandsAnyOrderOfCalls)
{
    Instance plain;
    RawBlock raw;
    EventList events;
    events.add(parameterEvent(0, 3, 0.5));
    for (int round = 0; round < 50; ++round) {
        plain.instance.flush(events);
        plain.instance.activate(round % 2 ? 44100.0 : 48000.0, 1, 512);
        plain.instance.flush(events);
        if (round % 3 != 0) {
            plain.instance.startProcessing();
            if (round % 5 != 0)
                plain.instance.process(raw.block);
            plain.instance.reset();
            plain.instance.process(raw.block);
            plain.instance.flush(events);
            plain.instance.stopProcessing();
        }
        plain.instance.reset();
        plain.instance.runMainThread();
        plain.instance.deactivate();
    }
    EXPECT_TRUE(plain.instance.host().violations().empty());
}

TEST(Robustness, RunsAHundredInstancesWithoutOneHearingAnother)
{
    const ClapModule module(SORDELIN_MODULE);
    std::vector<std::unique_ptr<ClapInstance>> instances;
    for (int i = 0; i < 100; ++i) {
        instances.push_back(std::make_unique<ClapInstance>(module));
        instances.back()->activate(48000.0, 1, 512);
        instances.back()->startProcessing();
    }
    for (int i = 0; i < 100; ++i) {
        RawBlock raw(512, 0.0f);
        raw.left[0] = static_cast<float>(i);
        raw.events.add(parameterEvent(0, 0, 0.0));  // 5 ms
        raw.events.add(parameterEvent(0, 7, 0.0));
        raw.events.add(parameterEvent(0, 24, 0.0));  // no filters
        raw.events.add(parameterEvent(0, 31, 0.0));
        instances[static_cast<std::size_t>(i)]->process(raw.block);
        EXPECT_EQ(raw.outRight[240], static_cast<float>(i));
    }
    std::swap(instances.front(), instances.back());
    while (!instances.empty())
        instances.pop_back();
}

TEST(Robustness, PlaysOnSeveralThreadsWhileTheMainThreadLooksOn)
{
    const ClapModule module(SORDELIN_MODULE);
    std::vector<std::unique_ptr<ClapInstance>> instances;
    for (int i = 0; i < 3; ++i) {
        instances.push_back(std::make_unique<ClapInstance>(module));
        instances.back()->parameters();
        instances.back()->activate(48000.0, 1, 512);
    }
    std::atomic<int> playing{3};
    std::vector<std::thread> threads;
    for (const auto& instance : instances) {
        threads.emplace_back([&playing, player = instance.get()] {
            player->startProcessing();
            for (int block = 0; block < 200; ++block) {
                RawBlock raw;
                raw.events.add(parameterEvent(100, static_cast<clap_id>(block % 39), 0.001 * block));
                raw.events.add(noteOnEvent(200, 0, 60, 1.0));
                player->process(raw.block);
            }
            player->stopProcessing();
            --playing;
        });
    }
    while (playing > 0) {
        for (const auto& instance : instances) {
            const ClapParameters& parameters = instance->parameters();
            for (clap_id id = 0; id < 39; ++id)
                EXPECT_FALSE(parameters.toText(id, parameters.value(id)).empty());
        }
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const auto& instance : instances)
        EXPECT_TRUE(instance->host().violations().empty());
}
