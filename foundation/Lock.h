#pragma once

#include <memory>

/// A lock. Not for the audio thread, except where a queue outgrows its memory.
class ILock {
public:
    virtual void lock() = 0;
    virtual void unlock() = 0;
    virtual ~ILock() = default;
};

/// A recursive mutual exclusion; the platform's class fills `enter` and `leave`.
class CriticalSection : public ILock {
public:
    void lock() override { enter(); }
    void unlock() override { leave(); }

    /// The platform's recursive lock.
    static std::unique_ptr<CriticalSection> create();

protected:
    virtual void enter() = 0;
    virtual void leave() = 0;
};

/// The base of objects that carry a lock of their own.
class LockedObject : public ILock {
public:
    LockedObject() : criticalSection(CriticalSection::create()) {}
    void lock() override { criticalSection->lock(); }
    void unlock() override { criticalSection->unlock(); }

private:
    std::unique_ptr<CriticalSection> criticalSection;
};

/// Holds a lock for the length of a block, also when an exception leaves it.
class ScopedLock {
public:
    explicit ScopedLock(ILock& heldLock) : held(heldLock) { held.lock(); }
    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;
    ~ScopedLock() { held.unlock(); }

private:
    ILock& held;
};
