#include "foundation/LockFreeQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <numeric>
#include <thread>
#include <vector>

namespace {

struct Message {
    std::uint32_t producer;
    std::uint32_t number;
    std::uint64_t check;  // tells a torn copy

    static Message make(std::uint32_t producer, std::uint32_t number)
    {
        return {producer, number, (std::uint64_t{producer} << 32 | number) * 0x9E3779B97F4A7C15u};
    }
    bool isWhole() const { return check == make(producer, number).check; }
};

}  // namespace

TEST(LockFreeQueue, KeepsTheOrderAcrossGrowth)
{
    LockFreeQueue<int> queue(8, 65536);
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 1000; ++i)
            ASSERT_EQ(queue.push(i), 1);
        for (int i = 0; i < 1000; ++i) {
            int value = -1;
            ASSERT_TRUE(queue.pop(value));
            ASSERT_EQ(value, i);
        }
        int value;
        EXPECT_FALSE(queue.pop(value));
    }
}

TEST(LockFreeQueue, DropsWhatIsBeyondItsLimitAndGoesOn)
{
    LockFreeQueue<int> queue(32, 32);
    int taken = 0;
    for (int i = 0; i < 100; ++i)
        taken += queue.push(i);
    EXPECT_EQ(taken, 30);  // two of the 32 nodes never hold data
    for (int i = 0; i < taken; ++i) {
        int value = -1;
        ASSERT_TRUE(queue.pop(value));
        EXPECT_EQ(value, i);
    }
    EXPECT_EQ(queue.push(1), 1);
}

TEST(LockFreeQueue, GrowsOnRequestAndForNobodyWhoMayNotWait)
{
    LockFreeQueue<int> queue(8, 64);
    const auto takenWithin = [&queue] {
        int taken = 0, value = 0;
        while (queue.pushWithin(taken))
            ++taken;
        for (int i = 0; i < taken; ++i)
            EXPECT_TRUE(queue.pop(value) && value == i);
        return taken;
    };
    EXPECT_EQ(takenWithin(), 6);  // two nodes never hold data
    queue.reserve(20);
    EXPECT_EQ(takenWithin(), 30);
    queue.reserve(1000);
    EXPECT_EQ(takenWithin(), 62);
}

TEST(LockFreeQueue, ReachesTheLimitOfItsLinks)
{
    LockFreeQueue<int> queue(8192, 65536);
    int taken = 0;
    while (taken < 70000 && queue.push(taken))
        ++taken;
    EXPECT_EQ(taken, 65534);
    for (int i = 0; i < taken; ++i) {
        int value = -1;
        ASSERT_TRUE(queue.pop(value) && value == i);
    }
}

TEST(LockFreeQueue, LosesAndTearsNothingBetweenManyThreads)
{
    constexpr std::uint32_t producers = 3;
    constexpr std::uint32_t perProducer = 20000;
    LockFreeQueue<Message> queue(16, 65536);  // grows while all are at work
    std::atomic<std::uint32_t> received{0};
    std::atomic<std::uint64_t> sum{0};
    std::atomic<bool> faulty{false};

    std::vector<std::thread> threads;
    for (std::uint32_t p = 0; p < producers; ++p) {
        threads.emplace_back([&queue, p] {
            for (std::uint32_t i = 0; i < perProducer; ++i) {
                while (!queue.push(Message::make(p, i)))
                    std::this_thread::yield();
            }
        });
    }
    for (int c = 0; c < 2; ++c) {
        threads.emplace_back([&] {
            std::vector<std::int64_t> last(producers, -1);
            Message message;
            while (received.load() < producers * perProducer) {
                if (!queue.pop(message)) {
                    std::this_thread::yield();
                    continue;
                }
                // One consumer sees what one producer pushed in its order.
                if (!message.isWhole() || message.number <= last[message.producer])
                    faulty = true;
                last[message.producer] = message.number;
                sum += message.number;
                ++received;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_FALSE(faulty);
    EXPECT_EQ(sum.load(), std::uint64_t{producers} * perProducer * (perProducer - 1) / 2);
}
