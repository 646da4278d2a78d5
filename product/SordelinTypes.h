#pragma once

/// What the product's switches select, by their raw values.

/// The length of a delay: its own time, or notes of the song.
enum class DelaySync { Free, TwoNotes, Note, HalfNote, QuarterNote };

enum class DelayLinkState { Separate, Linked };

enum class FeedbackInvert { Normal, Inverted };

/// How the two filters are joined.
enum class FilterRouting { Serial, Parallel, PerChannel };

/// What the two channels of the delay carry.
enum class ChannelMode { LeftRight, MidSide };

/// What is heard.
enum class AuditionSignal { Output, Input, SideChain };

enum class FilterCharacteristic {
    MorvelanePrime,
    Gentle,
    Raw,
    Tube,
    Metal,
    EasyGoing,
    Smooth,
    Hard,
    Hollow,
    Extreme,
    Clean
};
