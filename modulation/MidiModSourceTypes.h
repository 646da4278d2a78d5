#pragma once

/// The MIDI value that a MIDI source follows.
enum class MidiModSourceInput { ModWheel, PitchBend, Velocity, Aftertouch, KeyboardTrack, Controller };

/// How a MIDI source bends the value.
enum class MidiModSourceCurve { Linear, Exponential, Logarithmic, Square, SquareRoot, Sine };
