#pragma once

#include "clap_host/ClapParameters.h"

#include <ostream>

/// Writes one line per parameter under a heading: id, name, module, range and default in the plug-in's words.
void printParameterTable(const ClapParameters& parameters, std::ostream& out);
