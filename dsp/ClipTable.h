#pragma once

#include "dsp/FunctionTable.h"

/// The soft clipper of a filter characteristic: atan(x) below 0, atan(a x) / a above. Both halves have slope
/// 1 at 0; the lower one saturates at -pi/2, the upper one at pi / (2 a).
class ClipTable {
public:
    /// @param a  the asymmetry, above 0; 1 is symmetric
    explicit ClipTable(float a = 1.0f) { build(a); }

    /// Thread: main.
    void build(float a);
    const FunctionTable& table() const noexcept REALTIME { return function; }

private:
    FunctionTable function;
};
