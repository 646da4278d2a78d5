#pragma once

#include "product/SordelinLimits.h"

/// The ids of the modulation targets. Saved slots hold them, so they never change. Numbers of things count
/// from 0.
struct SordelinTargets {
    static constexpr int delayTime(int delay) { return 5 * delay; }
    static constexpr int delayOffset(int delay) { return 5 * delay + 1; }
    static constexpr int delayFeedback(int delay) { return 5 * delay + 2; }
    static constexpr int delayCrossFeedback(int delay) { return 5 * delay + 3; }
    static constexpr int delayPan(int delay) { return 5 * delay + 4; }

    static constexpr int firstFilter = 5 * SordelinLimits::delays;
    static constexpr int filterFrequency(int filter) { return firstFilter + 3 * filter; }
    static constexpr int filterPan(int filter) { return firstFilter + 3 * filter + 1; }
    static constexpr int filterPeak(int filter) { return firstFilter + 3 * filter + 2; }

    static constexpr int firstXlfo = firstFilter + 3 * SordelinLimits::filters;
    static constexpr int xlfoFrequency(int xlfo) { return firstXlfo + 3 * xlfo; }
    static constexpr int xlfoGlide(int xlfo) { return firstXlfo + 3 * xlfo + 1; }
    static constexpr int xlfoPhaseOffset(int xlfo) { return firstXlfo + 3 * xlfo + 2; }

    static constexpr int firstGenerator = firstXlfo + 3 * SordelinLimits::xlfos;
    static constexpr int generatorHold(int generator) { return firstGenerator + 6 * generator; }
    static constexpr int generatorDelay(int generator) { return firstGenerator + 6 * generator + 1; }
    static constexpr int generatorAttack(int generator) { return firstGenerator + 6 * generator + 2; }
    static constexpr int generatorDecay(int generator) { return firstGenerator + 6 * generator + 3; }
    static constexpr int generatorSustain(int generator) { return firstGenerator + 6 * generator + 4; }
    static constexpr int generatorRelease(int generator) { return firstGenerator + 6 * generator + 5; }

    static constexpr int firstFollower = firstGenerator + 6 * SordelinLimits::envelopeGenerators;
    static constexpr int followerAttack(int follower) { return firstFollower + 2 * follower; }
    static constexpr int followerRelease(int follower) { return firstFollower + 2 * follower + 1; }

    static constexpr int inputLevel = firstFollower + 2 * SordelinLimits::envelopeFollowers;
    static constexpr int dryLevel = inputLevel + 1;
    static constexpr int dryPan = inputLevel + 2;
    static constexpr int wetLevel = inputLevel + 3;
    static constexpr int wetPan = inputLevel + 4;

    static constexpr int firstSlot = inputLevel + 5;
    static constexpr int slotLevel(int slot) { return firstSlot + slot; }

    static constexpr int count = firstSlot + SordelinLimits::slots;
};

/// The ids of the modulation sources, under the same rule.
struct SordelinSources {
    static constexpr int xyHorizontal(int controller) { return 2 * controller; }
    static constexpr int xyVertical(int controller) { return 2 * controller + 1; }

    static constexpr int firstXlfo = 2 * SordelinLimits::xyControllers;
    static constexpr int xlfo(int number) { return firstXlfo + number; }

    static constexpr int firstGenerator = firstXlfo + SordelinLimits::xlfos;
    static constexpr int envelopeGenerator(int number) { return firstGenerator + number; }

    static constexpr int firstFollower = firstGenerator + SordelinLimits::envelopeGenerators;
    static constexpr int envelopeFollower(int number) { return firstFollower + number; }

    static constexpr int firstMidi = firstFollower + SordelinLimits::envelopeFollowers;
    static constexpr int midi(int number) { return firstMidi + number; }

    static constexpr int count = firstMidi + SordelinLimits::midiSources;
};
