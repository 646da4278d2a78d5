#include "dsp/Conversions.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

struct Pair {
    float from;
    double to;
};

TEST(Conversions, DecibelsAndGains)
{
    for (const auto& [db, gain] :
         {Pair{0.0f, 1.0}, Pair{20.0f, 10.0}, Pair{-36.0f, 0.015848932}, Pair{-180.0f, 1e-9}})
        EXPECT_NEAR(dbToGain(db), gain, gain * 2e-7) << db;
    for (const auto& [gain, db] : {Pair{1.0f, 0.0}, Pair{-0.5f, -6.0205999}, Pair{1e-9f, -180.0},
                                   Pair{1e-10f, -180.0}, Pair{5e-10f, -180.0}, Pair{0.0f, -180.0}})
        EXPECT_NEAR(gainToDb(gain), db, 1e-4) << gain;
}

TEST(Conversions, OctavesRatiosAndSemitones)
{
    EXPECT_EQ(octaveToRatio(-1.0f), 0.5f);
    EXPECT_NEAR(ratioToOctave(440.0f), 8.7813597, 1e-6);
    EXPECT_EQ(octavesToSemitones(1.5f), 18.0f);
    EXPECT_NEAR(semitonesToOctaves(7.0f), 7.0 / 12.0, 1e-7);
}

TEST(Conversions, RatiosWithZeroReachItOnAStraightLine)
{
    // The line runs from (log2 0.02, 0) to (-3, 1/8); half way it is at 1/16.
    const auto lowest = static_cast<float>(std::log2(0.02));
    struct Row {
        float octaves;
        double ratio;
    };
    for (const auto& [octaves, ratio] :
         {Row{4.0f, 16.0}, Row{-3.0f, 0.125}, Row{(lowest - 3.0f) / 2.0f, 0.0625}}) {
        EXPECT_NEAR(octaveToRatioWithZero(octaves), ratio, ratio * 1e-6);
        EXPECT_NEAR(ratioToOctaveWithZero(static_cast<float>(ratio)), octaves, 2e-6);
    }
    EXPECT_EQ(octaveToRatioWithZero(-10.0f), 0.0f);
    EXPECT_NEAR(ratioToOctaveWithZero(0.0f), lowest, 1e-6);
}

}  // namespace
