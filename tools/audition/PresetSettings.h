#pragma once

#include "audition/FactorySource.h"
#include "clap_host/ClapInstance.h"

#include <string>
#include <vector>

/// One event for each parameter of the plug-in, at its declared default. Thread: the instance's main thread.
std::vector<ClapEvent> defaultEvents(const ClapParameters& parameters);

/// Changes what the preset says otherwise.
///
/// Throws RenderError, with file and line, for an unknown name, for a text that the plug-in can't read, and
/// for one that it reads as something else: beyond the range, or an item by another name. Thread: as above.
void applySource(std::vector<ClapEvent>& events, const ClapParameters& parameters,
                 const FactorySource& source);

/// What a preset of `section` calls `name`: "XLFO 2 Step 1 Value" for "Step 1 Value". Null if there is no
/// such thing.
const ClapParameter* findSectionParameter(const ClapParameters& parameters, const std::string& section,
                                          const std::string& name);
