#pragma once

#include "clap_host/ClapModule.h"
#include "speed/SpeedReport.h"

#include <functional>
#include <vector>

/// What to measure of the plug-in's instances.
struct InstancePlan {
    int made = 100;                                  // for the time it takes
    int resident = 64;                               // for their memory
    std::vector<int> playing = {50, 100, 200, 400};  // rising
    int rounds = 5;
};

/// In milliseconds: makes an instance, activates it at 48 kHz, and lets it go.
double millisecondsToMake(const ClapModule& module);

/// Everything but the first instance's time. `module` has had one. @param tellDone  called with 0..1
InstanceFigures measureInstances(const ClapModule& module, const InstancePlan& plan,
                                 const std::function<void(double)>& tellDone);
