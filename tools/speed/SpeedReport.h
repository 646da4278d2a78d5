#pragma once

#include "speed/SpeedMeasurement.h"

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

/// One line of a report.
struct SpeedRow {
    std::string name;
    SpeedFigure figure;
};

/// How the cost of a stereo frame goes with something countable. In ns.
struct SpeedSeries {
    struct Point {
        double at = 0.0;
        double nanoseconds = 0.0;
    };
    std::string name;
    std::vector<Point> points;
};

/// What one instance takes besides the time of its sound.
struct InstanceFigures {
    /// How much of a core as many instances of the default patch take that play in real time.
    struct Load {
        int instances = 0;
        double cores = 0.0;
    };

    double firstMs = 0.0;  // to make and activate the first one of a process
    SpeedRow makeMs;       // the same for the next ones
    double residentMiB = 0.0;
    int residentInstances = 0;
    std::vector<Load> loads;

    /// By the largest load, with what as many instances do to the caches.
    double perCore() const { return loads.back().instances / loads.back().cores; }
};

/// Everything that a run of the tool has measured.
struct SpeedReport {
    int rounds = 0;
    std::string processor;         // what the plug-in's filters run on
    std::vector<SpeedRow> floors;  // the four-wide filters first, the memory last
    std::optional<SpeedRow> peer;
    std::string peerText;                // which one, or how to get it
    std::vector<SpeedRow> patches;       // the default first
    std::vector<SpeedRow> commonKernel;  // some of them by a module without AVX2
    std::vector<SpeedRow> presets;
    std::vector<SpeedSeries> blocks;  // over frames per block
    std::vector<SpeedSeries> matrix;  // over slots and over sources
    InstanceFigures instances;
};

/// For a person to read.
void printSpeedReport(const SpeedReport& report, std::ostream& out);
/// False if the file can't be written.
bool writeSpeedChart(const SpeedReport& report, const std::filesystem::path& file);
