#pragma once

#include "render/ParameterSettings.h"
#include "render/SignalRenderer.h"

#include <ostream>
#include <string>
#include <vector>

/// What the closing summary tells, besides the signals themselves.
struct SummaryContent {
    std::string inputName;
    std::string outputName;
    std::string plotName;  // empty: no plot
    const StereoSignal& input;
    const RenderOutcome& outcome;
    std::vector<AppliedSetting> settings;
    bool formatClips = false;  // the output file can't hold what lies beyond full scale
};

/// A line per file with length, peak and RMS, the settings, the speed, and whatever the musician should know:
/// samples that are no numbers, clipping, a cut tail, automation that was never reached.
void printSummary(const SummaryContent& content, std::ostream& out);

/// "0:09.97", from minutes up "61:02.50".
std::string durationText(double seconds);
