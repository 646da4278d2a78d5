#pragma once

#include "audition/FactorySource.h"
#include "audition/PresetVerdicts.h"

#include <ostream>
#include <vector>

/// What an audition found, one place per preset in each list.
struct AuditionReport {
    std::vector<FactorySource> sources;
    std::vector<AuditionResult> results;
    std::vector<PresetVerdict> verdicts;

    /// The presets with faults.
    std::size_t faulty() const;
};

/// "-12.3 +0.2 ..." with the measures that both the table and the contact sheet show, short.
std::string measuresText(const AuditionResult& result);

/// Writes a line per preset under a heading, the faults below it, and the sum of it all.
/// @param materials  their names: one further line for each; empty for none
void printReport(const AuditionReport& report, const std::vector<std::string>& materials, std::ostream& out);
