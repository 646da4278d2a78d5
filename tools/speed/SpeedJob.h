#pragma once

#include "speed/SpeedReport.h"

#include <filesystem>
#include <ostream>

/// What the command line asks for. An empty path stands for an option not given.
struct SpeedOptions {
    std::filesystem::path folder;        // takes the table and the chart
    std::filesystem::path plugin;        // the module
    std::filesystem::path commonPlugin;  // the module that runs on every processor
    std::filesystem::path presets;       // sources of the factory presets
    std::string only;    // part of the names of the only patches to play; empty for everything
    bool quick = false;  // a glance, in some two seconds
    bool quiet = false;  // no progress
};

/// Measures everything, writes `speed.txt` and `speed.png` into the folder and the table to `out`. With
/// `only` there is a short table and no chart. Throws RenderError or ClapHostError if something can't be
/// read, played or written.
SpeedReport runSpeedJob(const SpeedOptions& options, std::ostream& out, std::ostream& messages);
