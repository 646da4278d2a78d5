#pragma once

#include "modulation/ModulationConfiguration.h"

#include <string>

/// The product's modulation sources and targets: their kinds, and how far each kind reaches on each target.
ModulationConfiguration sordelinModulation();

/// The names of the sources and of the targets in the order of their ids, parted by commas.
std::string sordelinSourceNames();
std::string sordelinTargetNames();
