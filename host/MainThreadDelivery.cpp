#include "host/MainThreadDelivery.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>

namespace {

// Hosts manage 30 calls a second; faster than that nobody sees a preset change.
constexpr std::uint32_t timerPeriodMs = 33;

}  // namespace

MainThreadDelivery::MainThreadDelivery(const clap_host_t& clapHost, DeferredEventQueue& eventQueue)
    : host(clapHost), queue(eventQueue)
{
    descriptors = static_cast<const clap_host_posix_fd_support_t*>(
        host.get_extension(&host, CLAP_EXT_POSIX_FD_SUPPORT));
    timers = static_cast<const clap_host_timer_support_t*>(host.get_extension(&host, CLAP_EXT_TIMER_SUPPORT));
    if (watchDescriptor())
        chosen = Way::Descriptor;
    else if (startTimer())
        chosen = Way::Timer;
    queue.setWaker(this);
}

MainThreadDelivery::~MainThreadDelivery()
{
    queue.setWaker(nullptr);
    if (chosen == Way::Timer)
        timers->unregister_timer(&host, timer);
    if (descriptor < 0)
        return;
    descriptors->unregister_fd(&host, descriptor);
    close(descriptor);
}

bool MainThreadDelivery::watchDescriptor()
{
    if (!descriptors)
        return false;
    descriptor = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    if (descriptor < 0)
        return false;
    if (descriptors->register_fd(&host, descriptor, CLAP_POSIX_FD_READ))
        return true;
    close(descriptor);
    descriptor = -1;
    return false;
}

bool MainThreadDelivery::startTimer()
{
    return timers && timers->register_timer(&host, timerPeriodMs, &timer);
}

bool MainThreadDelivery::onDescriptor(int readable)
{
    if (descriptor < 0 || readable != descriptor)
        return false;
    std::uint64_t wakes = 0;
    // Emptied before the queue is: a wake that comes later makes it readable again.
    [[maybe_unused]] const ssize_t count = read(descriptor, &wakes, sizeof wakes);
    queue.deliver();
    return true;
}

bool MainThreadDelivery::onTimer(clap_id elapsed)
{
    if (chosen != Way::Timer || elapsed != timer)
        return false;
    if (queue.isAwaited())
        queue.deliver();
    return true;
}

void MainThreadDelivery::wake() noexcept
{
    if (chosen == Way::Descriptor) {
        const std::uint64_t once = 1;
        // Never blocks: one wake between two deliveries doesn't fill the counter.
        [[maybe_unused]] const ssize_t count = write(descriptor, &once, sizeof once);
    } else if (chosen == Way::Callback) {
        host.request_callback(&host);
    }
}
