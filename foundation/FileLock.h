#pragma once

#include <string>

/// Keeps processes, and threads of one process, from changing the same files at once: who holds the lock
/// alone may change them. The lock goes with the object, and with a process that ends. Thread: any but audio.
class FileLock {
public:
    static constexpr int usualPatienceMs = 3000;

    /// Makes the file where there is none, and waits for the lock, at most `patienceMs`: a process that holds
    /// it may be stopped. Where the file system has no locks, everybody holds them.
    /// @param path  of a file that is for locking alone, and stays
    explicit FileLock(const std::string& path, int patienceMs = usualPatienceMs);
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

    /// False if the file can't be made, or somebody else kept the lock.
    bool isHeld() const noexcept { return held; }

private:
    int file;
    bool held = false;
};
