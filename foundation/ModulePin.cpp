#include "foundation/ModulePin.h"

#include <dlfcn.h>

void pinModule()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&pinModule), &info) == 0 || !info.dli_fname)
        return;
    // Opening once more what is loaded only adds the flag. A program, which nobody unloads, isn't found.
    if (void* module = dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE))
        dlclose(module);
}
