#pragma once

#include "speed/SpeedSubject.h"

#include <functional>
#include <vector>

/// What a subject takes of one core, in ns per stereo frame.
struct SpeedFigure {
    double least = 0.0;   // what the machine can do when nobody disturbs it
    double median = 0.0;  // what it did this time
};

/// The calling thread's own time on a core, in seconds.
double threadSeconds() noexcept;

/// Plays a stretch of each subject in turn, again and again, so that what disturbs the machine for a while
/// meets all of them alike.
/// @param tellDone  called with 0..1 after each round
std::vector<SpeedFigure> measureInTurn(const std::vector<SpeedSubject*>& subjects, int rounds,
                                       const std::function<void(double)>& tellDone);
