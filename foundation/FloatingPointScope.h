#pragma once

#include "foundation/Realtime.h"

/// Flushes denormal numbers to zero, as operands and as results, for the length of a block; the caller's
/// state comes back at its end. Thread: any, each has its own state.
class FloatingPointScope {
public:
    FloatingPointScope() noexcept REALTIME;
    FloatingPointScope(const FloatingPointScope&) = delete;
    FloatingPointScope& operator=(const FloatingPointScope&) = delete;
    ~FloatingPointScope() REALTIME;

private:
    unsigned long long saved;
};
