#include "foundation/IntervalTimer.h"

#include <gtest/gtest.h>

namespace {

std::uint32_t now = 0;
std::uint32_t fakeTick() noexcept { return now; }

}  // namespace

TEST(IntervalTimer, MeasuresAcrossTheWrapOfItsTick)
{
    struct Row {
        std::uint32_t start, end, elapsed;
    };
    for (auto [start, end, elapsed] :
         {Row{0, 0, 0}, Row{1000, 1250, 250}, Row{0xFFFFFF00u, 0x00000100u, 0x200},  // 256 before, 256 after
          Row{0x80000000u, 0x7FFFFFFFu, 0xFFFFFFFFu}}) {                             // the longest of all
        now = start;
        const auto timer = createIntervalTimer(fakeTick);
        now = end;
        EXPECT_EQ(timer->elapsedMs(), elapsed);
        timer->restart();
        EXPECT_EQ(timer->elapsedMs(), 0u);
        now += 7;
        EXPECT_EQ(timer->elapsedMs(), 7u);
    }
}

TEST(IntervalTimer, SystemsTickGoesOn)
{
    const std::uint32_t first = systemTickMs();
    const auto timer = createIntervalTimer();
    while (systemTickMs() - first < 2) {
    }
    EXPECT_GE(timer->elapsedMs(), 1u);
    EXPECT_LT(timer->elapsedMs(), 60000u);
}
