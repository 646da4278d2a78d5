#include "CallCounter.h"

#include <dlfcn.h>
#include <pthread.h>

#include <cerrno>
#include <cstddef>

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

using LockFunction = int (*)(pthread_mutex_t*);

int countedLock(LockFunction& real, const char* name, pthread_mutex_t* mutex)
{
    if (watching)
        ++counts.locks;
    if (!real)
        real = reinterpret_cast<LockFunction>(dlsym(RTLD_NEXT, name));
    return real(mutex);
}

LockFunction realLock = nullptr;
LockFunction realTryLock = nullptr;

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

}  // namespace calls

extern "C" {

__attribute__((visibility("default"))) void* malloc(std::size_t size)
{
    if (watching)
        ++counts.allocations;
    return __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size)
{
    if (watching)
        ++counts.allocations;
    return __libc_calloc(count, size);
}

__attribute__((visibility("default"))) void* realloc(void* memory, std::size_t size)
{
    if (watching)
        ++counts.allocations;
    return __libc_realloc(memory, size);
}

__attribute__((visibility("default"))) void* memalign(std::size_t alignment, std::size_t size)
{
    return countedAligned(alignment, size);
}

__attribute__((visibility("default"))) void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return countedAligned(alignment, size);
}

__attribute__((visibility("default"))) int posix_memalign(void** memory, std::size_t alignment,
                                                          std::size_t size)
{
    *memory = countedAligned(alignment, size);
    return *memory ? 0 : ENOMEM;
}

__attribute__((visibility("default"))) void free(void* memory)
{
    if (watching && memory)
        ++counts.releases;
    __libc_free(memory);
}

__attribute__((visibility("default"))) int pthread_mutex_lock(pthread_mutex_t* mutex)
{
    return countedLock(realLock, "pthread_mutex_lock", mutex);
}

__attribute__((visibility("default"))) int pthread_mutex_trylock(pthread_mutex_t* mutex)
{
    return countedLock(realTryLock, "pthread_mutex_trylock", mutex);
}

}  // extern "C"
