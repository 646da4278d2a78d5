#include "CallCounter.h"
#include "RealtimeUse.h"
#include "clap_host/ClapInstance.h"
#include "foundation/DeferredEventQueue.h"
#include "stress/RunLength.h"
#include "support/ControllerMapFile.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <semaphore.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <condition_variable>
#include <cstdio>
#include <functional>
#include <mutex>
#include <new>
#include <random>
#include <shared_mutex>
#include <thread>

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

TEST(CallCounter, SeesEveryKindOfLock)
{
    std::mutex mutex;
    std::shared_mutex shared;
    std::condition_variable condition;
    std::once_flag onceFlag;
    sem_t semaphore;
    sem_init(&semaphore, 0, 0);
    const std::function<void()> takes[] = {
        [&] { std::unique_lock(mutex, std::try_to_lock); },
        [&] { std::lock_guard lock(shared); },
        [&] { std::unique_lock(shared, std::try_to_lock); },
        [&] { std::shared_lock lock(shared); },
        [&] { condition.notify_one(); },
        [&] { condition.notify_all(); },
        [&] { std::call_once(onceFlag, [] {}); },
        [&] { sem_post(&semaphore); },
        [&] { sem_wait(&semaphore); },
    };
    for (const auto& take : takes) {
        calls::watch();
        take();
        EXPECT_EQ(calls::unwatch().locks, 1) << &take - takes;
    }
}

TEST(CallCounter, SeesSystemCallsAndMakesThem)
{
    bool trapped = false;
    calls::Counts counts, unwatched;
    std::array<int, 2> pipeEnds{};
    ASSERT_EQ(pipe(pipeEnds.data()), 0);
    char arrived[3] = {};
    std::thread([&] {
        trapped = calls::trapSystemCalls();
        calls::watch();
        const auto sent = write(pipeEnds[1], "ab", 2);
        const auto refused = write(-1, "", 0);
        const auto received = read(pipeEnds[0], arrived, 2);
        counts = calls::unwatch();
        EXPECT_EQ(sent, 2);
        EXPECT_EQ(refused, -1);
        EXPECT_EQ(errno, EBADF);
        EXPECT_EQ(received, 2);
        getppid();
        calls::watch();
        unwatched = calls::unwatch();
    }).join();
    close(pipeEnds[0]);
    close(pipeEnds[1]);
    EXPECT_STREQ(arrived, "ab");
    if (!trapped)
        GTEST_SKIP() << "no trap for system calls here";
    EXPECT_EQ(counts.systemCalls, 3);
    EXPECT_EQ(counts.lastSystemCall, SYS_read);
    EXPECT_EQ(counts.wakes, 0);
    EXPECT_EQ(unwatched.systemCalls, 0);
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

namespace {

/// A home in which controllers move parameters, and program changes load presets.
struct MidiHome {
    MidiHome()
    {
        writeControllerMap(home.productData(), controllerMapBytes(mappedControllers()));
        std::filesystem::create_directories(home.folder / "config/Morvelane/Sordelin");
        home.folder.write("config/Morvelane/Sordelin/2.0.toml", "EnableMIDIProgramChanges = 1\n");
    }
    TemporaryHome home;
};

}  // namespace

TEST(Realtime, NeitherAllocatesNorLocksInAHundredThousandBlocks)
{
    const MidiHome home;  // program changes go to the main thread, which never comes: its queue overflows
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

TEST(Realtime, CallsNothingThatWaitsInRandomUse)
{
    const std::uint32_t seed = seedToRun();
    SCOPED_TRACE(testing::Message() << "SORDELIN_SEED=" << seed);
    Random random(seed);
    const MidiHome home;
    const ClapModule module(SORDELIN_MODULE);
    ClapInstance instance(module);
    RealtimeUse use(instance, random, MainThreadUser::presetsOfHome());
    for (const RunClock clock(secondsToRun(4.0)); clock.isRunning() && !HasFailure();)
        use.playAtSomeRate(0.1 + random.unit());

    const auto& [counts, blocks, seconds] = use.figures();
    std::printf("%ld blocks, %.0f s of sound, %ld wakes of the main thread\n", blocks, seconds, counts.wakes);
    EXPECT_EQ(counts.allocations, 0);
    EXPECT_EQ(counts.releases, 0);
    EXPECT_EQ(counts.locks, 0);
    // The one call let through never waits: it tells the host's main loop of work, once until that is done.
    EXPECT_EQ(counts.systemCalls, counts.wakes) << "the last one has the number " << counts.lastSystemCall;
    EXPECT_EQ(instance.host().violations(), std::vector<std::string>());
}
