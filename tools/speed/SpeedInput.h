#pragma once

#include <vector>

/// One channel of a stretch of sound: two strokes of noise that die away, so that envelopes have something to
/// follow. The same every time. Full scale is -1..1.
const std::vector<float>& speedInput();
