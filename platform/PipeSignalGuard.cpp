#include "platform/PipeSignalGuard.h"

#include <ctime>

namespace gui {

namespace {

sigset_t pipeSignal() noexcept
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    return set;
}

bool isPending() noexcept
{
    sigset_t pending;
    return sigpending(&pending) == 0 && sigismember(&pending, SIGPIPE) == 1;
}

}  // namespace

PipeSignalGuard::PipeSignalGuard() noexcept : wasPending(isPending())
{
    const sigset_t set = pipeSignal();
    pthread_sigmask(SIG_BLOCK, &set, &before);
}

PipeSignalGuard::~PipeSignalGuard()
{
    // One that waited before is someone else's.
    if (!wasPending && isPending()) {
        const sigset_t set = pipeSignal();
        const timespec now{0, 0};
        sigtimedwait(&set, nullptr, &now);
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace gui
