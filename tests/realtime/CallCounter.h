#pragma once

#include <cstddef>

/// Counts what a realtime thread must not do. Linked into a program it stands before the C library's
/// allocation and locking functions, also for modules that the program loads.
namespace calls {

/// Made by the calling thread while its watch was on.
struct Counts {
    long allocations = 0;
    long releases = 0;
    long locks = 0;  // also read-write locks, conditions, semaphores and pthread_once
    // Where system calls are trapped.
    long systemCalls = 0;
    long wakes = 0;           // among these, writes of 8 bytes, as to an event descriptor
    long lastSystemCall = 0;  // number of the last one that was no wake

    Counts& operator+=(const Counts& more);
};

/// Starts counting on this thread, from 0.
void watch();
/// Stops counting and returns the counts.
Counts unwatch();

/// Has the system calls of this thread counted too, while its watch is on; all of them are made as ever. It
/// lasts as long as the thread, so that is for threads that end. False where the system has no such trap.
bool trapSystemCalls();

/// For the trap. @param size  third argument of the call
void noteSystemCall(long number, std::size_t size) noexcept;

}  // namespace calls
