#pragma once

/// Counts what a realtime thread must not do. Linked into a program it stands before the C library's
/// allocation and locking functions, also for modules that the program loads.
namespace calls {

/// Made by the calling thread while its watch was on.
struct Counts {
    long allocations = 0;
    long releases = 0;
    long locks = 0;
};

/// Starts counting on this thread, from 0.
void watch();
/// Stops counting and returns the counts.
Counts unwatch();

}  // namespace calls
