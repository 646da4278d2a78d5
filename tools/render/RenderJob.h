#pragma once

#include "render/RenderOptions.h"

#include <ostream>

/// Does all that the options ask for: lists parameters, or renders, writes the files and prints the summary.
///
/// Throws RenderError or ClapHostError, with one line that tells what is wrong, and then leaves no output
/// file. All that can be known to be wrong beforehand is found before anything is rendered.
/// @param out       for the list or the summary
/// @param messages  for the progress
void runRenderJob(const RenderOptions& options, std::ostream& out, std::ostream& messages);
