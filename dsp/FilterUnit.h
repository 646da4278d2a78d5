#pragma once

#include "dsp/FilterTypes.h"
#include "wave/Producer.h"

#include <cstdint>
#include <vector>

/// The signals that shape a filter over one sub-block.
struct FilterSignals {
    const float* frequency = nullptr;  // log2 of Hz
    const float* peak = nullptr;       // 0..1
    const float* gain = nullptr;       // linear
    const float* gate = nullptr;       // 0..1, scales the peak; null where there is none
    bool allConstant = false;          // all but the gate

    float peakAt(int i) const noexcept REALTIME { return gate ? peak[i] * gate[i] : peak[i]; }
};

/// What filters: a filter hands it its signals, cut into segments in which the coefficients may stay. Thread:
/// audio.
class FilterUnit : public wave::Component {
public:
    explicit FilterUnit(wave::Environment& owner);

    FilterResponse response = FilterResponse::LowPass;
    FilterSlope slope = FilterSlope::Db12;

    /// Forgets all signal state.
    virtual void clear() noexcept REALTIME = 0;

    wave::Environment& environment() const noexcept REALTIME { return env; }

protected:
    /// A segment is at most this long, and ends where the frequency has moved by a tenth of an octave or the
    /// peak by 0.0002.
    static constexpr int longestSegment = 32;

    /// Clears the unit if it missed time or was reset.
    void beginBlock(int count) noexcept REALTIME;
    /// Where the segment that begins at `from` ends for these signals, at most at `limit`.
    static int segmentEnd(const FilterSignals& signals, int from, int limit) noexcept REALTIME;

    std::vector<int> segmentLengths;  // room for one per sample

private:
    wave::Environment& env;
    std::uint64_t nextBlockTime = 0;
};
