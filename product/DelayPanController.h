#pragma once

#include "wave/MultiProducer.h"

/// The gains of a delay on the two output channels. In the middle both are 1; to a side the other one falls
/// to 0. Thread: audio.
class DelayPanController : public wave::MultiProducer {
public:
    /// @param panSignal  -1..1
    DelayPanController(wave::Environment& owner, wave::Producer& panSignal)
        : MultiProducer(owner, 2), pan(panSignal)
    {}

protected:
    void generate(wave::Block** blocks, int count, int flags) noexcept REALTIME override;

private:
    wave::Producer& pan;
    wave::SteadyFill steady[2];
};
