#include "platform/X11Pump.h"

#include <poll.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <system_error>

namespace gui {

namespace {

int checked(int descriptor)
{
    if (descriptor < 0)
        throw std::system_error(errno, std::generic_category());
    return descriptor;
}

void raise(int event) noexcept
{
    const std::uint64_t once = 1;
    [[maybe_unused]] const ssize_t count = write(event, &once, sizeof once);
}

bool take(int event) noexcept
{
    std::uint64_t count = 0;
    return read(event, &count, sizeof count) == sizeof count;
}

}  // namespace

X11Pump::X11Pump(HostLoop& hostLoop, Sink& pumpSink) : loop(hostLoop), sink(pumpSink)
{
    epoll = checked(epoll_create1(EPOLL_CLOEXEC));
    clock = checked(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC));
    Add(clock);
    watched = loop.Watch(epoll, *this);
    timed = !watched && loop.StartTimer(tickMs, *this);
    if (!watched && !timed)
        StartThread();
}

X11Pump::~X11Pump()
{
    *alive = false;
    if (watched)
        loop.Unwatch(epoll);
    if (timed)
        loop.StopTimer(*this);
    if (thread.joinable()) {
        raise(stop);
        thread.join();
        close(stop);
        close(served);
    }
    loop.Forget(*this);
    close(clock);
    close(epoll);
}

void X11Pump::Add(int descriptor)
{
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = descriptor;
    epoll_ctl(epoll, EPOLL_CTL_ADD, descriptor, &event);
}

void X11Pump::Remove(int descriptor)
{
    epoll_event event{};
    epoll_ctl(epoll, EPOLL_CTL_DEL, descriptor, &event);
}

void X11Pump::RunTicks(bool run)
{
    itimerspec period{};
    if (run)
        period.it_value.tv_nsec = period.it_interval.tv_nsec = tickMs * 1000000L;
    timerfd_settime(clock, 0, &period, nullptr);
}

void X11Pump::Serve()
{
    const std::shared_ptr<bool> stillAlive = alive;
    sink.PumpReadable();
    if (*stillAlive && TakeTick()) {
        sink.PumpTick();
        // What the tick asked of the display may have brought events along with the answers.
        if (*stillAlive)
            sink.PumpReadable();
    }
    if (*stillAlive && thread.joinable())
        raise(served);
}

bool X11Pump::TakeTick() { return take(clock); }

void X11Pump::Wait(const std::vector<X11Pump*>& pumps, int timeoutMs)
{
    std::vector<pollfd> waits;
    for (const X11Pump* pump : pumps)
        waits.push_back({pump->epoll, POLLIN, 0});
    poll(waits.data(), waits.size(), timeoutMs);
}

void X11Pump::StartThread()
{
    stop = checked(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC));
    served = checked(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC));
    thread = std::thread([this] { RunThread(); });
}

void X11Pump::RunThread()
{
    // Signals are for the host's threads.
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
    pollfd waits[2] = {{epoll, POLLIN, 0}, {stop, POLLIN, 0}};
    for (;;) {
        poll(waits, 2, -1);
        if (waits[1].revents)
            return;
        take(served);
        loop.RequestMainThread(*this);
        // Until it was served it stays readable, and asking once is enough.
        pollfd answers[2] = {{served, POLLIN, 0}, {stop, POLLIN, 0}};
        poll(answers, 2, -1);
    }
}

}  // namespace gui
