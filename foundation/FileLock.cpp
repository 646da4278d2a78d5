#include "foundation/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

// Short: writers that follow each other closely leave the lock alone for a few microseconds only.
constexpr std::chrono::microseconds retryAfter(250);

bool isTaken(int error) noexcept { return error == EWOULDBLOCK || error == EINTR; }

}  // namespace

FileLock::FileLock(const std::string& path, int patienceMs)
    : file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666))
{
    if (file < 0)
        return;
    const auto deadline = Clock::now() + std::chrono::milliseconds(patienceMs);
    // A lock of the open file, not of the process, so that threads keep apart, too.
    int result = flock(file, LOCK_EX | LOCK_NB);
    while (result != 0 && isTaken(errno) && Clock::now() < deadline) {
        std::this_thread::sleep_for(retryAfter);
        result = flock(file, LOCK_EX | LOCK_NB);
    }
    held = result == 0 || !isTaken(errno);
}

FileLock::~FileLock()
{
    if (file >= 0)
        close(file);
}
