#include "product/FilterResources.h"

#include <mutex>

namespace {

// Constant-initialised and trivially destroyed: nothing runs when the module is loaded or unloaded.
constinit std::mutex resourcesLock;
constinit int holders = 0;
constinit FilterResources* shared = nullptr;

}  // namespace

const FilterResources& FilterResources::acquire()
{
    const std::lock_guard lock(resourcesLock);
    if (holders++ == 0)
        shared = new FilterResources;
    return *shared;
}

void FilterResources::release()
{
    const std::lock_guard lock(resourcesLock);
    if (--holders > 0)
        return;
    delete shared;
    shared = nullptr;
}
