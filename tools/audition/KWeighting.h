#pragma once

#include "clap_host/StereoSignal.h"

/// The loudness of `signal` from frame `first` up to `last`, ungated: the mean power of both channels through
/// the two filters of ITU-R BS.1770-4, in LUFS. -200 for silence.
/// The standard gives its filters at 48 kHz; here the analogue filters behind them are warped to any rate.
double loudness(const StereoSignal& signal, std::size_t first, std::size_t last);
