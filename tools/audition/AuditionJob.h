#pragma once

#include "audition/AuditionOptions.h"

#include <ostream>

/// Does all that the options ask for: reads the presets, hears them on all cores, prints the report and draws
/// the sheet. False if a preset is flagged that isn't forgiven.
///
/// Throws RenderError or ClapHostError, with one line for each preset that can't be read, before anything is
/// rendered.
/// @param out       for the report
/// @param messages  for the progress
bool runAudition(const AuditionOptions& options, std::ostream& out, std::ostream& messages);
