#pragma once

#include "core/GenericPluginInfo.h"
#include "core/VersionInfo.h"

/// Who the product is. Both halves of every instance and the module's descriptor ask here.
inline GenericPluginInfo sordelinInfo()
{
    GenericPluginInfo info;
    info.category = GenericPluginInfo::Delay;
    info.flags = GenericPluginInfo::IdIsProviderId | GenericPluginInfo::HasSideChain;
    info.code = "MStd";
    info.name = "Sordelin";
    return info;
}

inline VersionInfo sordelinVersion() { return VersionInfo::fromText("2.41"); }
