#include "CallCounter.h"
#include "clap_host/ClapInstance.h"
#include "foundation/DeferredEventQueue.h"
#include "support/ControllerMapFile.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <array>
#include <mutex>
#include <new>
#include <random>

namespace {

/// The events of one block: a few random parameters anywhere in the tree, notes, controllers and
/// program changes.
void fill(EventList& events, std::minstd_rand& random, const std::vector<ClapParameter>& parameters)
{
    events.clear();
    for (int i = 0; i < 4; ++i) {
        const ClapParameter& parameter = parameters[random() % parameters.size()];
        const double place = static_cast<double>(random() % 1001) / 1000.0;
        events.add(parameterEvent(static_cast<std::uint32_t>(random() % 128), parameter.id,
                                  parameter.minimum + place * (parameter.maximum - parameter.minimum)));
    }
    const auto key = static_cast<int>(random() % 128);
    events.add(noteOnEvent(static_cast<std::uint32_t>(random() % 128), 0, key, 0.7));
    events.add(noteOffEvent(static_cast<std::uint32_t>(random() % 128), 0, key, 0.7));
    events.add(midiEvent(static_cast<std::uint32_t>(random() % 128), 0xB0,
                         static_cast<std::uint8_t>(random() % 120),
                         static_cast<std::uint8_t>(random() % 128)));
    events.add(
        midiEvent(static_cast<std::uint32_t>(random() % 128), 0xC0, static_cast<std::uint8_t>(key), 0));
}

/// Most controllers move something: parameters all over the tree, and both links.
std::map<int, std::int32_t> mappedControllers()
{
    std::map<int, std::int32_t> targets{{118, 0x100000}, {119, 0x100001}};
    for (int controller = 0; controller < 117; ++controller)
        targets[controller] = controller * 6;
    return targets;
}

}  // namespace

TEST(CallCounter, SeesWhatTheThreadDoes)
{
    std::mutex mutex;
    calls::watch();
    ::operator delete(::operator new(16));
    ::operator delete(::operator new(64, std::align_val_t(32)), std::align_val_t(32));
    mutex.lock();
    mutex.unlock();
    const calls::Counts counts = calls::unwatch();
    EXPECT_EQ(counts.allocations, 2);
    EXPECT_EQ(counts.releases, 2);
    EXPECT_EQ(counts.locks, 1);
}

TEST(Realtime, PostsToTheMainThreadFreely)
{
    struct Waker : DeferredEventQueue::Waker {
        void wake() noexcept override { ++wakes; }
        int wakes = 0;
    } waker;
    DeferredEventQueue queue;
    queue.setWaker(&waker);
    int taken = 0;
    calls::watch();
    for (int i = 0; i < 2000; ++i)  // more than there is room for
        taken += queue.post(0, i);
    const calls::Counts counts = calls::unwatch();
    EXPECT_EQ(counts.allocations + counts.releases + counts.locks, 0);
    EXPECT_EQ(taken, DeferredEventQueue::capacity);
    EXPECT_EQ(waker.wakes, 1);
}

TEST(Realtime, NeitherAllocatesNorLocksInAHundredThousandBlocks)
{
    const TemporaryHome home;
    writeControllerMap(home.productData(), controllerMapBytes(mappedControllers()));
    // Program changes go to the main thread, which never comes: its queue overflows.
    std::filesystem::create_directories(home.folder / "config/Morvelane/Sordelin");
    home.folder.write("config/Morvelane/Sordelin/2.0.toml", "EnableMIDIProgramChanges = 1\n");
    const ClapModule module(SORDELIN_MODULE);
    ClapInstance instance(module);
    const std::vector<ClapParameter>& parameters = instance.parameters().list();
    instance.activate(48000.0, 1, 128);

    std::vector<float> left = signals::noise(128, 30), right = signals::noise(128, 31), outLeft(128),
                       outRight(128);
    std::array in{left.data(), right.data()};
    std::array out{outLeft.data(), outRight.data()};
    const std::array inputs{clap_audio_buffer_t{in.data(), nullptr, 2, 0, 0},
                            clap_audio_buffer_t{in.data(), nullptr, 2, 0, 0}};
    std::array outputs{clap_audio_buffer_t{out.data(), nullptr, 2, 0, 0}};
    EventList events;
    ClapBlock block;
    block.inputs = inputs;
    block.outputs = outputs;
    block.frames = 128;
    block.events = &events;
    std::minstd_rand random(1);

    calls::Counts total;
    calls::watch();
    instance.startProcessing();
    total = calls::unwatch();
    for (int i = 0; i < 100000; ++i) {
        fill(events, random, parameters);
        calls::watch();
        instance.process(block);
        const calls::Counts counts = calls::unwatch();
        total.allocations += counts.allocations;
        total.releases += counts.releases;
        total.locks += counts.locks;
    }
    calls::watch();
    instance.reset();
    instance.stopProcessing();
    const calls::Counts last = calls::unwatch();
    EXPECT_EQ(total.allocations + last.allocations, 0);
    EXPECT_EQ(total.releases + last.releases, 0);
    EXPECT_EQ(total.locks + last.locks, 0);
}
