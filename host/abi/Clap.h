#pragma once

// The CLAP interface, version 1.2.5: the only header of this folder that others include. Names, values and
// layouts are those of the published format, so that what compiles against one branch compiles against the
// other.
#if defined(SORDELIN_SYSTEM_CLAP)
// With the drafts: project location and gain metering are among them.
#include <clap/all.h>
#else
#include "abi/ClapContextMenu.h"
#include "abi/ClapCore.h"
#include "abi/ClapEvents.h"
#include "abi/ClapExtensions.h"
#include "abi/ClapFactories.h"
#include "abi/ClapGui.h"
#include "abi/ClapParams.h"
#include "abi/ClapPorts.h"
#include "abi/ClapPresetDiscovery.h"
#include "abi/ClapProcess.h"
#include "abi/ClapProjectLocation.h"
#include "abi/ClapState.h"
#endif
