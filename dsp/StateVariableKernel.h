#pragma once

#include "foundation/Realtime.h"

/// The inner loop of the state-variable filter, four lanes wide, in one build for each kind of processor. All
/// builds give the same results to rounding.
struct StateVariableKernel {
    static constexpr int lanes = 4;
    static constexpr int maxStages = 4;  // 12 dB per octave each

    /// Of one segment: for each coefficient four lanes.
    struct alignas(16) Coefficients {
        float frequency[lanes];
        float damping[maxStages][lanes];
        float cubic[lanes];
        float inputGain[lanes];
        float clipInGain[lanes];  // in steps of the clipper's table
        float clipOutGain[lanes];
    };
    /// The integrators of all stages.
    struct alignas(16) States {
        float band[maxStages][lanes];
        float low[maxStages][lanes];
    };
    /// The clipper's curve at whole numbers from `first`, which is 0 or less, to `last`; `values` holds one
    /// more.
    struct Clipper {
        const float* values;
        int first;
        int last;
        float offset;  // of the place for an input of 0
    };
    /// How much of each of a stage's signals is its output.
    struct Mix {
        float low;
        float band;
        float high;
    };
    /// One filter over one sub-block.
    struct Job {
        const Coefficients* segments;
        const int* segmentLengths;  // samples; their sum is the count
        int stages;                 // 1, 2 or 4
        Mix mix;
        Clipper clipper;
        const float* inputs[lanes];  // these and the next with room for a multiple of eight samples, aligned
        float* outputs[lanes];
        float* scratch;  // four lanes of the same
        States* states;
    };

    const char* name;
    /// Filters `count` samples of the inputs into the outputs, and carries the states on. Thread: any.
    void (*run)(const Job& job, int count) noexcept;
    /// The same for two filters of which the second has the first one's outputs as its inputs. A loop waits
    /// for its own results most of the time; two at once take little longer than one.
    void (*runInSeries)(const Job& first, const Job& second, int count) noexcept;

    /// What every processor of this kind runs.
    static const StateVariableKernel& common();
    /// The fastest build that this processor runs.
    static const StateVariableKernel& best();
};
