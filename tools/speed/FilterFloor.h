#pragma once

#include <memory>

class SpeedSubject;

// What no implementation of the same sound can go below: the arithmetic of two filters in series on four
// lanes, three rounds a sample, with nothing around it.

/// One filter after the other, four lanes wide, as every x86 processor of 64 bits runs them.
std::unique_ptr<SpeedSubject> makeFilterFloor();
/// Both filters at once, eight lanes wide, with AVX2 and fused multiply-add. Null where the processor lacks
/// them.
std::unique_ptr<SpeedSubject> makeWideFilterFloor();
