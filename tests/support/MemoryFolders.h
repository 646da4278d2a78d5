#pragma once

#include "support/TemporaryHome.h"

#include <filesystem>

/// Makes temporary folders in memory meanwhile, where the system has a place for that: for tests that write
/// so many files that waiting for the disk would take minutes.
class MemoryFolders {
public:
    MemoryFolders()
    {
        if (std::filesystem::is_directory("/dev/shm"))
            environment.set("TMPDIR", "/dev/shm");
    }

private:
    ScopedEnvironment environment;
};
