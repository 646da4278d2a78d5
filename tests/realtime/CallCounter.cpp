#include "CallCounter.h"

#include <dlfcn.h>
#include <pthread.h>
#include <semaphore.h>
#include <sys/syscall.h>

#include <atomic>
#include <cerrno>
#include <cstddef>

#define EXPORTED __attribute__((visibility("default")))

// The C library's own entries behind the ones replaced here.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}

namespace {

thread_local bool watching = false;
thread_local calls::Counts counts;

void* countedAligned(std::size_t alignment, std::size_t size)
{
    if (watching)
        ++counts.allocations;
    return __libc_memalign(alignment, size);
}

/// A function of the C library behind one that is replaced here and counts as a lock.
template <class... Arguments>
class Behind {
public:
    /// @param symbolVersion  where there are older ones too, the one that programs of today use
    constexpr explicit Behind(const char* symbol, const char* symbolVersion = nullptr)
        : name(symbol), version(symbolVersion)
    {}
    int operator()(Arguments... arguments)
    {
        if (watching)
            ++counts.locks;
        if (!real.load())
            real = reinterpret_cast<Function>(version ? dlvsym(RTLD_NEXT, name, version)
                                                      : dlsym(RTLD_NEXT, name));
        return real.load()(arguments...);
    }

private:
    using Function = int (*)(Arguments...);
    const char* name;
    const char* version;
    std::atomic<Function> real{nullptr};
};

constexpr const char* conditionVersion = "GLIBC_2.3.2";  // the older ones are of another layout

constinit Behind<pthread_mutex_t*> mutexLock("pthread_mutex_lock");
constinit Behind<pthread_mutex_t*> mutexTryLock("pthread_mutex_trylock");
constinit Behind<pthread_mutex_t*, const timespec*> mutexTimedLock("pthread_mutex_timedlock");
constinit Behind<pthread_rwlock_t*> readLock("pthread_rwlock_rdlock");
constinit Behind<pthread_rwlock_t*> readTryLock("pthread_rwlock_tryrdlock");
constinit Behind<pthread_rwlock_t*> writeLock("pthread_rwlock_wrlock");
constinit Behind<pthread_rwlock_t*> writeTryLock("pthread_rwlock_trywrlock");
constinit Behind<pthread_cond_t*, pthread_mutex_t*> conditionWait("pthread_cond_wait", conditionVersion);
constinit Behind<pthread_cond_t*, pthread_mutex_t*, const timespec*>
    conditionTimedWait("pthread_cond_timedwait", conditionVersion);
constinit Behind<pthread_cond_t*> conditionSignal("pthread_cond_signal", conditionVersion);
constinit Behind<pthread_cond_t*> conditionBroadcast("pthread_cond_broadcast", conditionVersion);
constinit Behind<sem_t*> semaphoreWait("sem_wait");
constinit Behind<sem_t*> semaphoreTryWait("sem_trywait");
constinit Behind<sem_t*> semaphorePost("sem_post");
constinit Behind<pthread_once_t*, void (*)()> once("pthread_once");

}  // namespace

namespace calls {

void watch()
{
    counts = {};
    watching = true;
}

Counts unwatch()
{
    watching = false;
    return counts;
}

Counts& Counts::operator+=(const Counts& more)
{
    allocations += more.allocations;
    releases += more.releases;
    locks += more.locks;
    systemCalls += more.systemCalls;
    wakes += more.wakes;
    if (more.lastSystemCall != 0)
        lastSystemCall = more.lastSystemCall;
    return *this;
}

void noteSystemCall(long number, std::size_t size) noexcept
{
    if (!watching)
        return;
    ++counts.systemCalls;
    if (number == SYS_write && size == 8)
        ++counts.wakes;
    else
        counts.lastSystemCall = number;
}

}  // namespace calls

extern "C" {

EXPORTED void* malloc(std::size_t size)
{
    if (watching)
        ++counts.allocations;
    return __libc_malloc(size);
}

EXPORTED void* calloc(std::size_t count, std::size_t size)
{
    if (watching)
        ++counts.allocations;
    return __libc_calloc(count, size);
}

EXPORTED void* realloc(void* memory, std::size_t size)
{
    if (watching)
        ++counts.allocations;
    return __libc_realloc(memory, size);
}

EXPORTED void* memalign(std::size_t alignment, std::size_t size) { return countedAligned(alignment, size); }

EXPORTED void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return countedAligned(alignment, size);
}

EXPORTED int posix_memalign(void** memory, std::size_t alignment, std::size_t size)
{
    *memory = countedAligned(alignment, size);
    return *memory ? 0 : ENOMEM;
}

EXPORTED void free(void* memory)
{
    if (watching && memory)
        ++counts.releases;
    __libc_free(memory);
}

// What takes a lock, or wakes who waits for one.

EXPORTED int pthread_mutex_lock(pthread_mutex_t* mutex) { return mutexLock(mutex); }
EXPORTED int pthread_mutex_trylock(pthread_mutex_t* mutex) { return mutexTryLock(mutex); }
EXPORTED int pthread_mutex_timedlock(pthread_mutex_t* mutex, const timespec* until)
{
    return mutexTimedLock(mutex, until);
}
EXPORTED int pthread_rwlock_rdlock(pthread_rwlock_t* lock) { return readLock(lock); }
EXPORTED int pthread_rwlock_tryrdlock(pthread_rwlock_t* lock) { return readTryLock(lock); }
EXPORTED int pthread_rwlock_wrlock(pthread_rwlock_t* lock) { return writeLock(lock); }
EXPORTED int pthread_rwlock_trywrlock(pthread_rwlock_t* lock) { return writeTryLock(lock); }
EXPORTED int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex)
{
    return conditionWait(condition, mutex);
}
EXPORTED int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex, const timespec* until)
{
    return conditionTimedWait(condition, mutex, until);
}
EXPORTED int pthread_cond_signal(pthread_cond_t* condition) { return conditionSignal(condition); }
EXPORTED int pthread_cond_broadcast(pthread_cond_t* condition) { return conditionBroadcast(condition); }
EXPORTED int sem_wait(sem_t* semaphore) { return semaphoreWait(semaphore); }
EXPORTED int sem_trywait(sem_t* semaphore) { return semaphoreTryWait(semaphore); }
EXPORTED int sem_post(sem_t* semaphore) { return semaphorePost(semaphore); }
EXPORTED int pthread_once(pthread_once_t* control, void (*routine)()) { return once(control, routine); }

}  // extern "C"
