#include "foundation/DeferredEventQueue.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>
#include <vector>

namespace {

struct Counter : DeferredEventQueue::Waker {
    void wake() noexcept override { ++wakes; }
    std::atomic<int> wakes{0};
};

struct QueueFixture : testing::Test {
    QueueFixture()
    {
        queue.received.addHandler(NotifyEvent::handler(*this, &QueueFixture::take));
        queue.delivered.addHandler(NotifyEvent::handler([this](void*) { ++deliveries; }));
        queue.setWaker(&counter);
    }
    void take(void* message)
    {
        received.push_back(*static_cast<const AsyncEventQueue::Message*>(message));
        threads.push_back(std::this_thread::get_id());
        if (whileTaking)
            whileTaking();
    }
    std::vector<std::int64_t> arguments(std::int32_t kind) const
    {
        std::vector<std::int64_t> result;
        for (const auto& message : received) {
            if (message.kind == kind)
                result.push_back(message.argument);
        }
        return result;
    }
    Counter counter;
    DeferredEventQueue queue;
    std::vector<AsyncEventQueue::Message> received;
    std::vector<std::thread::id> threads;
    std::function<void()> whileTaking;
    int deliveries = 0;
};
using Arguments = std::vector<std::int64_t>;

}  // namespace

TEST_F(QueueFixture, DeliversInTheOrderOfPostingAndWakesOnce)
{
    EXPECT_TRUE(queue.post(2, 5));
    EXPECT_TRUE(queue.post(-1, INT64_MIN));
    EXPECT_TRUE(queue.post(2, INT64_MAX));
    EXPECT_TRUE(received.empty());
    EXPECT_EQ(counter.wakes, 1);
    EXPECT_TRUE(queue.isAwaited());
    queue.deliver();
    EXPECT_FALSE(queue.isAwaited());
    EXPECT_EQ(arguments(2), (Arguments{5, INT64_MAX}));
    EXPECT_EQ(arguments(-1), Arguments{INT64_MIN});
    EXPECT_EQ(received[1].kind, -1);
    EXPECT_EQ(deliveries, 1);
    queue.post(0, 0);
    EXPECT_EQ(counter.wakes, 2);
}

TEST_F(QueueFixture, BringsEachThreadsMessagesInItsOrder)
{
    constexpr int perThread = 20000;
    std::atomic<int> posting{3};
    std::vector<std::thread> producers;
    for (std::int32_t kind = 0; kind < 3; ++kind) {
        producers.emplace_back([this, kind, &posting] {
            for (int i = 0; i < perThread;) {
                if (queue.post(kind, i))
                    ++i;
                else
                    std::this_thread::yield();
            }
            --posting;
        });
    }
    // Only when woken: a wake that is lost would leave messages behind.
    int served = 0;
    while (posting > 0 || counter.wakes != served) {
        if (counter.wakes == served)
            continue;
        ++served;
        queue.deliver();
    }
    for (std::thread& producer : producers)
        producer.join();
    Arguments expected(perThread);
    for (int i = 0; i < perThread; ++i)
        expected[static_cast<std::size_t>(i)] = i;
    for (std::int32_t kind = 0; kind < 3; ++kind)
        EXPECT_EQ(arguments(kind), expected);
    for (const std::thread::id& thread : threads)
        ASSERT_EQ(thread, std::this_thread::get_id());
}

TEST_F(QueueFixture, RefusesWhatIsTooMuchAndKeepsTheRest)
{
    for (int i = 0; i < DeferredEventQueue::capacity; ++i)
        ASSERT_TRUE(queue.post(1, i));
    EXPECT_FALSE(queue.post(1, -1));
    queue.deliver();
    EXPECT_EQ(received.size(), static_cast<std::size_t>(DeferredEventQueue::capacity));
    EXPECT_EQ(received.back().argument, DeferredEventQueue::capacity - 1);
    EXPECT_TRUE(queue.post(1, 7));
    queue.deliver();
    EXPECT_EQ(received.back().argument, 7);
}

TEST_F(QueueFixture, StandsHandlersThatPostAndDeliver)
{
    int posts = 3;
    whileTaking = [&] {
        const std::size_t before = received.size();
        queue.deliver();  // as a call of the host from within a handler would
        EXPECT_EQ(received.size(), before);
        if (posts-- > 0)
            queue.post(5, posts);
    };
    queue.post(5, 10);
    queue.post(5, 11);
    queue.deliver();
    EXPECT_EQ(arguments(5), (Arguments{10, 11, 2, 1, 0}));

    posts = 1 << 30;  // a handler that never ends posting doesn't keep the thread
    queue.post(6, 0);
    counter.wakes = 0;
    queue.deliver();
    EXPECT_GE(counter.wakes, 1);
}

TEST_F(QueueFixture, WakesANewWakerForWhatWaits)
{
    queue.setWaker(nullptr);
    queue.post(1, 1);
    EXPECT_EQ(counter.wakes, 0);
    queue.setWaker(&counter);
    EXPECT_EQ(counter.wakes, 1);
}
