#include "core/SharedPluginData.h"

namespace {

// Constant-initialised and trivially destroyed: nothing runs when the module is loaded or unloaded.
constinit std::mutex sharedDataLock;
constinit int instanceCount = 0;
constinit SharedPluginData* data = nullptr;

}  // namespace

std::mutex& SharedPluginData::lock() noexcept { return sharedDataLock; }

SharedPluginData& SharedPluginData::join(bool& first)
{
    first = instanceCount == 0;
    if (first)
        data = new SharedPluginData;
    ++instanceCount;
    return *data;
}

void SharedPluginData::leave()
{
    if (--instanceCount != 0)
        return;
    delete data;
    data = nullptr;
}
