#include "modulation/XLFOFreqController.h"

#include "modulation/XLFO.h"

#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double noAnchor = -std::numeric_limits<double>::infinity();
constexpr double beatsPerWholeNote = 4.0;
constexpr float wholeNotesPerSecond = 0.004166667f;  // at one beat per minute: 1 / 240
constexpr double longestWait = 0.5;                  // beats

/// In whole notes, by SyncMode.
constexpr std::array cycles = {0.0f, 16.0f, 8.0f,   4.0f,    2.0f,     1.0f,
                               0.5f, 0.25f, 0.125f, 0.0625f, 0.03125f, 0.015625f};

}  // namespace

XLFOFreqController::XLFOFreqController(wave::Environment& owner, XLFO& lockedXlfo,
                                       wave::Producer& frequencySignal)
    : Producer(owner),
      offset(owner, 1.0f),
      syncMode(SyncMode::Free),
      xlfo(lockedXlfo),
      frequencyTarget(frequencySignal),
      syncFrequency(owner, 0.0f),
      anchorPosition(noAnchor)
{
    offset.parameter().setRange(0.5f, 2.0f);
    syncFrequency.parameter.setRange(0.0f, 1000.0f);
    xlfo.frequency.connect(this);
}

void XLFOFreqController::transportChanged(float newTempo, double beats) noexcept
{
    if (!std::isfinite(newTempo) || !std::isfinite(beats))
        return;
    tempo = newTempo;
    position = beats;
    positionTime = environment().now();
    transportPending = true;
}

void XLFOFreqController::generate(wave::Block* block, int count, int) noexcept
{
    if (syncMode.value() == SyncMode::Free) {
        show(frequencyTarget.pull(count));
        anchorPosition = noAnchor;
        return;
    }
    if (transportPending)
        syncFrequency.assign(wholeNotesPerSecond / cycles[static_cast<std::size_t>(syncMode.value())] *
                             tempo);
    const wave::Block& rate = syncFrequency.pull(count);
    const wave::Block& factor = offset.pull(count);
    for (int i = 0; i < count; ++i)
        (*block)[i] = factor[i] * rate[i];
    block->setConstant(factor.isConstant() && rate.isConstant());
    if (transportPending)
        lockPhase(factor[0]);
}

/// While the offset moves, the lock waits for up to half a beat: each of its values would have the cycle
/// elsewhere in the song, and a sweep would be a row of jumps.
void XLFOFreqController::lockPhase(float presentOffset) noexcept
{
    // The mode may have been chosen since the block began.
    const double beatsPerSample = static_cast<double>(tempo) / 60.0 / environment().sampleRate();
    const double present =
        position + static_cast<double>(environment().now() - positionTime) * beatsPerSample;
    if (isNear(presentOffset, anchorOffset) || std::fabs(present - anchorPosition) >= longestWait ||
        environment().now() == environment().softResetTime()) {
        anchorPosition = present;
        anchorOffset = presentOffset;
    }
    const double wholeNotes =
        static_cast<double>(cycles[static_cast<std::size_t>(syncMode.value())]) / anchorOffset;
    xlfo.lock(anchorPosition, wholeNotes * beatsPerWholeNote);
    // Not the anchor: a note that starts the cycle over while the offset moves does so at its own place.
    xlfo.setSongPosition(present, beatsPerSample);
    transportPending = false;
}
