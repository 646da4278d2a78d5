#pragma once

#include "foundation/Property.h"
#include "wave/MultiProducer.h"

/// Codes two channels into mid and side, or back. Mid is the mean of the channels; a positive side means that
/// the second channel is louder. Encoding and decoding in a row give the input back. Thread: audio.
class MidSideConverter : public wave::MultiFilter {
public:
    enum class Conversion { None, Encode, Decode };

    explicit MidSideConverter(wave::Environment& owner) : MultiFilter(owner, 2) {}

    Property<Conversion> conversion;

protected:
    void filter(wave::Block* const* in, wave::Block** out, int count, int flags) noexcept REALTIME override;
};
