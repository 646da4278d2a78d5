#pragma once

#include "dsp/FunctionTable.h"

/// The functions that the coefficients of the state-variable filter are read from. Built once, shared by all
/// filters. Frequencies are log2 of cut-off over sample rate.
struct StateVariableTables {
    StateVariableTables();

    FunctionTable frequency;   // 2 sin(pi fc / (3 fs)): the loop runs three times a sample
    FunctionTable peakLimit;   // of steep high-pass and band-pass filters, by frequency
    FunctionTable dampLimit;   // of the damping, by the frequency coefficient
    FunctionTable dampLimit2;  // the same for the second stage
    FunctionTable damping;     // 2 (1 - resonance^(1/4)): negative above 1, where the filter sings by itself
};
