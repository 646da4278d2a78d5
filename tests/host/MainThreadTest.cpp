// Work for the main thread arrives, whatever the host offers for it.
#include "clap_host/ClapInstance.h"
#include "host/MainThreadDelivery.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <poll.h>

#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace {

using Way = MainThreadDelivery::Way;

/// A queue that is delivered through a host.
struct Delivered {
    Delivered(std::uint32_t offered, bool refuses) : host(offered)
    {
        host.enter(ClapHost::Stage::Ready);
        if (refuses)
            host.refuseRegistrations();
        queue.received.addHandler(NotifyEvent::handler([this](void* message) {
            arguments.push_back(static_cast<const AsyncEventQueue::Message*>(message)->argument);
        }));
        delivery.emplace(*host.record(), queue);
    }
    void postElsewhere(std::int64_t argument)
    {
        std::thread([&] { queue.post(0, argument); }).join();
    }
    ClapHost host;
    DeferredEventQueue queue;
    std::optional<MainThreadDelivery> delivery;
    std::vector<std::int64_t> arguments;
};

bool isReadable(int descriptor)
{
    pollfd watched{descriptor, POLLIN, 0};
    return poll(&watched, 1, 0) == 1;
}

std::ptrdiff_t openDescriptors()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
}

/// An instance whose user lets MIDI select presets; a program change then posts to the main thread.
struct MidiInstance {
    explicit MidiInstance(std::uint32_t extensions)
    {
        std::filesystem::create_directories(home.folder / "config/Morvelane/Sordelin");
        home.folder.write("config/Morvelane/Sordelin/2.0.toml", "EnableMIDIProgramChanges = 1\n");
        instance = std::make_unique<ClapInstance>(module, extensions);
        instance->activate(48000.0, 1, 64);
        instance->startProcessing();
    }
    void changeProgram()
    {
        EventList events;
        events.add(midiEvent(0, 0xC0, 5, 0));
        std::array<float, 64> left{}, right{};
        std::array out{left.data(), right.data()};
        std::array outputs{clap_audio_buffer_t{out.data(), nullptr, 2, 0, 0}};
        ClapBlock block;
        block.outputs = outputs;
        block.frames = 64;
        block.events = &events;
        instance->process(block);
    }
    /// True if the main thread has been asked for.
    bool isAwaited() const
    {
        for (const int descriptor : instance->host().descriptors()) {
            if (isReadable(descriptor))
                return true;
        }
        return instance->host().calls.callbackRequests > served;
    }
    const TemporaryHome home;
    const ClapModule module{SORDELIN_MODULE};
    std::unique_ptr<ClapInstance> instance;
    int served = 0;
};

}  // namespace

TEST(MainThreadDelivery, TakesTheBestThatTheHostOffers)
{
    constexpr std::uint32_t both = HostExtensions::timers | HostExtensions::descriptors;
    struct Row {
        std::uint32_t offered;
        bool refuses;
        Way way;
        std::size_t descriptors, timers;
    };
    for (const auto& [offered, refuses, way, descriptors, timers] :
         {Row{both, false, Way::Descriptor, 1, 0},
          Row{HostExtensions::descriptors, false, Way::Descriptor, 1, 0},
          Row{HostExtensions::timers, false, Way::Timer, 0, 1},
          Row{HostExtensions::none, false, Way::Callback, 0, 0}, Row{both, true, Way::Callback, 0, 0}}) {
        const auto open = openDescriptors();
        Delivered delivered(offered, refuses);
        EXPECT_EQ(delivered.delivery->way(), way);
        EXPECT_EQ(delivered.host.descriptors().size(), descriptors);
        EXPECT_EQ(delivered.host.timers().size(), timers);
        delivered.delivery.reset();
        EXPECT_TRUE(delivered.host.descriptors().empty() && delivered.host.timers().empty());
        EXPECT_EQ(openDescriptors(), open);
        delivered.queue.post(0, 1);  // wakes nobody
        EXPECT_EQ(delivered.host.calls.callbackRequests, 0);
        EXPECT_TRUE(delivered.host.violations().empty());
    }
}

TEST(MainThreadDelivery, MakesItsDescriptorReadableUntilAllIsDelivered)
{
    Delivered delivered(HostExtensions::descriptors, false);
    const int descriptor = delivered.host.descriptors().at(0);
    for (int round = 0; round < 3; ++round) {
        EXPECT_FALSE(isReadable(descriptor));
        delivered.postElsewhere(1);
        delivered.postElsewhere(2);
        EXPECT_TRUE(isReadable(descriptor));
        EXPECT_FALSE(delivered.delivery->onDescriptor(descriptor + 1));
        EXPECT_TRUE(delivered.arguments.empty());
        EXPECT_TRUE(delivered.delivery->onDescriptor(descriptor));
        EXPECT_EQ(delivered.arguments, (std::vector<std::int64_t>{1, 2}));
        delivered.arguments.clear();
    }
    // Delivered by another call meanwhile: the descriptor's own one finds nothing to do.
    delivered.postElsewhere(3);
    delivered.queue.deliver();
    EXPECT_TRUE(delivered.delivery->onDescriptor(descriptor));
    EXPECT_FALSE(isReadable(descriptor));
    EXPECT_EQ(delivered.arguments.size(), 1u);
    EXPECT_EQ(delivered.host.calls.callbackRequests, 0);
}

TEST(MainThreadDelivery, LooksForWorkWithEachTick)
{
    Delivered delivered(HostExtensions::timers, false);
    const clap_id timer = delivered.host.timers().at(0);
    EXPECT_TRUE(delivered.delivery->onTimer(timer));
    delivered.postElsewhere(7);
    EXPECT_FALSE(delivered.delivery->onTimer(timer + 1));
    EXPECT_TRUE(delivered.arguments.empty());
    EXPECT_TRUE(delivered.delivery->onTimer(timer));
    EXPECT_EQ(delivered.arguments, std::vector<std::int64_t>{7});
    EXPECT_EQ(delivered.host.calls.callbackRequests, 0);
}

TEST(MainThreadDelivery, AsksForOneCallbackAtATime)
{
    Delivered delivered(HostExtensions::none, false);
    for (int round = 1; round <= 3; ++round) {
        delivered.postElsewhere(1);
        delivered.postElsewhere(2);
        EXPECT_EQ(delivered.host.calls.callbackRequests, round);
        delivered.queue.deliver();
    }
    EXPECT_EQ(delivered.arguments.size(), 6u);
}

TEST(MainThread, IsServedByEveryKindOfHost)
{
    for (const std::uint32_t extensions :
         {std::uint32_t{HostExtensions::all}, HostExtensions::all & ~HostExtensions::descriptors,
          HostExtensions::none}) {
        MidiInstance midi(extensions);
        EXPECT_FALSE(midi.isAwaited());
        midi.changeProgram();
        EXPECT_EQ(midi.isAwaited(), !(extensions == (HostExtensions::all & ~HostExtensions::descriptors)));
        midi.instance->runMainThread();
        midi.served = midi.instance->host().calls.callbackRequests;
        EXPECT_FALSE(midi.isAwaited());
        EXPECT_TRUE(midi.instance->host().violations().empty());
    }
}

TEST(MainThread, DoesWhatWaitsWithTheNextCallThatComes)
{
    const clap_plugin_params_t* params = nullptr;
    using Call = void (*)(ClapInstance&, const clap_plugin_params_t&);
    for (const Call call : {
             Call([](ClapInstance&p, const clap_plugin_params_t&table) { table.count(&p.plugin()); }),
             Call([](ClapInstance&p, const clap_plugin_params_t&table) {
                 double value = 0.0;
                 table.get_value(&p.plugin(), 0, &value);
             }),
             Call([](ClapInstance&p, const clap_plugin_params_t&) {
                 p.stopProcessing();
                 p.deactivate();
             }),
         }) {
        MidiInstance midi(HostExtensions::none);  // and this host makes no callback
        params = midi.instance->extension<clap_plugin_params_t>(CLAP_EXT_PARAMS);
        midi.changeProgram();
        midi.changeProgram();
        EXPECT_EQ(midi.instance->host().calls.callbackRequests, 1);
        // From a thread that isn't the main one nothing is done.
        std::thread([&] { params->count(&midi.instance->plugin()); }).join();
        midi.changeProgram();
        EXPECT_EQ(midi.instance->host().calls.callbackRequests, 1);
        call(*midi.instance, *params);
        if (midi.instance->state() == ClapInstance::State::Inactive) {
            midi.instance->activate(48000.0, 1, 64);
            midi.instance->startProcessing();
        }
        midi.changeProgram();
        EXPECT_EQ(midi.instance->host().calls.callbackRequests, 2);  // it was done: so it asks anew
    }
}

TEST(MainThread, HearsOfNoProgramChangeUnlessAUserWantsThem)
{
    MidiInstance midi(HostExtensions::none);
    midi.home.folder.write("config/Morvelane/Sordelin/2.0.toml", "EnableMIDIProgramChanges = 0\n");
    ClapInstance other(midi.module, HostExtensions::none);  // reads the settings of all
    midi.changeProgram();
    EXPECT_FALSE(midi.isAwaited());
}
