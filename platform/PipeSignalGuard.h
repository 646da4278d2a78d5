#pragma once

#include <csignal>

namespace gui {

/// Keeps a write to a display or bus that went away from ending the process. Such a write raises SIGPIPE,
/// whose default is the end of the host; a handler isn't ours to set. It is held back on this thread for the
/// length of a block and, if it was raised meanwhile, taken.
class PipeSignalGuard {
public:
    PipeSignalGuard() noexcept;
    ~PipeSignalGuard();
    PipeSignalGuard(const PipeSignalGuard&) = delete;
    PipeSignalGuard& operator=(const PipeSignalGuard&) = delete;

private:
    sigset_t before;
    bool wasPending;
};

}  // namespace gui
