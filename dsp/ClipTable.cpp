#include "dsp/ClipTable.h"

#include <cmath>

namespace {

constexpr int entries = 8192;
constexpr double lowestInput = -40.0;
// Puts an input of 0 exactly on entry 4095.
constexpr double highestInput = 40.00976800976801;

}  // namespace

void ClipTable::build(float a)
{
    const double asymmetry = a;
    const double inverse = 1.0 / asymmetry;
    const auto clip = [asymmetry, inverse](double x) {
        return x < 0.0 ? std::atan(x) : std::atan(asymmetry * x) * inverse;
    };
    function.build(entries, clip, lowestInput, highestInput);
}
