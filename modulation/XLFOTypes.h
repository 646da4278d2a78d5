#pragma once

/// How an XLFO glides from one step to the next.
enum class XLFOGlideCurve { Linear, Square, SquareRoot, Sine };

/// The length of an XLFO's cycle: its own frequency, or a number of whole notes.
enum class XLFOSyncMode {
    Free,
    Notes16,
    Notes8,
    Notes4,
    Notes2,
    Notes1,
    Half,
    Quarter,
    Eighth,
    Sixteenth,
    ThirtySecond,
    SixtyFourth
};
