#pragma once

#include "abi/Clap.h"

/// What the module exports, for those who link its code directly.
extern "C" CLAP_EXPORT const clap_plugin_entry_t clap_entry;
