#pragma once

/// How many there are of each thing, which the order of the host's parameter list depends on.
struct SordelinLimits {
    static constexpr int delays = 2;
    static constexpr int filters = 2;
    static constexpr int xyControllers = 4;
    static constexpr int xlfos = 6;
    static constexpr int xlfoSteps = 16;
    static constexpr int envelopeGenerators = 6;
    static constexpr int envelopeFollowers = 4;
    static constexpr int midiSources = 10;
    static constexpr int slots = 24;
};
