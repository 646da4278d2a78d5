#include "foundation/IntervalTimer.h"

#include <chrono>

namespace {

class TickIntervalTimer : public IntervalTimer {
public:
    explicit TickIntervalTimer(TickMs tickSource) : tick(tickSource), start(tickSource()) {}
    // The difference wraps as the tick does.
    std::uint32_t elapsedMs() const noexcept override { return tick() - start; }
    void restart() noexcept override { start = tick(); }

private:
    TickMs tick;
    std::uint32_t start;
};

}  // namespace

std::uint32_t systemTickMs() noexcept
{
    using std::chrono::milliseconds;
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<milliseconds>(sinceStart).count());
}

std::unique_ptr<IntervalTimer> createIntervalTimer(TickMs tick)
{
    return std::make_unique<TickIntervalTimer>(tick);
}
