#pragma once

#include "core/GenericPluginInfo.h"
#include "core/VersionInfo.h"

inline VersionInfo sordelinVersion() { return VersionInfo::fromText("2.41"); }

/// Who the product is. Both halves of every instance and the module's descriptor ask here.
inline GenericPluginInfo sordelinInfo()
{
    GenericPluginInfo info;
    info.category = GenericPluginInfo::Delay;
    info.flags = GenericPluginInfo::IdIsProviderId | GenericPluginInfo::HasSideChain;
    info.code = "MStd";
    info.name = "Sordelin";
    info.versionedName = sordelinVersion().nameOf(info.name);
    return info;
}
