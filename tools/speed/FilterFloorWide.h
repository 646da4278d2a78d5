#pragma once

/// Runs two filters at once over `count` samples of four lanes, in place; the second one is a sample behind
/// the first. `samples` holds `4 * count` floats, aligned to 16 bytes. For processors with AVX2 and fused
/// multiply-add alone.
void runWideFilterFloor(float* samples, int count) noexcept;
