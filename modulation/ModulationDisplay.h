#pragma once

#include "foundation/IntervalTimer.h"
#include "modulation/ModulationMatrix.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class BinaryDataWriter;

/// How far the slots have moved each target, and where each source stands, for an editor that shows it. The
/// audio thread gathers, as long as somebody asks; the main thread collects.
class ModulationDisplay {
public:
    /// @param sourceValue  where a source stands, as 0..1; called on the audio thread
    ModulationDisplay(wave::Environment& owner, ModulationMatrix& shownMatrix,
                      std::function<float(int)> sourceValue);

    /// Takes the values of the block that was just computed, if somebody asks for them and a 60th of a second
    /// has gone by since the last time. Thread: audio.
    void update() noexcept REALTIME;

    /// Asks for values. They end a quarter of a second after the last time. Thread: main.
    void request() noexcept { ++requests; }
    /// Writes the distances of all targets from their parameters' signals, in units of the targets' scales,
    /// and then the values of all sources; all 0 when nobody has asked for long. Thread: main.
    void collect(BinaryDataWriter& writer);

private:
    float distanceOf(int target) const noexcept REALTIME;

    wave::Environment& environment;
    ModulationMatrix& matrix;
    std::function<float(int)> valueOfSource;
    std::vector<std::atomic<float>> targets;                              // by target id
    std::vector<std::atomic<float>> sources;                              // by source id
    std::atomic<unsigned> requests{0};                                    // 0 while nobody asks
    unsigned requestsSeen = 0;                                            // main thread
    std::unique_ptr<IntervalTimer> sinceRequest = createIntervalTimer();  // main thread
    std::uint64_t lastTime = 0;                                           // of the last update, in samples
};
