#include "voicing/VoicingMeter.h"
#include "dsp/FilterStyles.h"

#include <gtest/gtest.h>

namespace {

enum { Gentle = 1, Raw = 2, Tube = 3, Metal = 4, EasyGoing = 5, Hard = 7, Extreme = 9 };

VoicingMeter::Ringing ringing(const FilterStyles& styles, int style, double cutoffHz, double peak)
{
    return VoicingMeter(styles.at(style)).ringing({cutoffHz, peak});
}

}  // namespace

TEST(VoicingMeter, MeasuresTheGainOfAPlainTwoPoleFilter)
{
    // 1 / sqrt((1 - r^2)^2 + (d r)^2) at r times the cut-off. The damping d is 2 at no peak and
    // 2 (1 - 0.5^(1/4)) = 0.31821 at a peak of 0.5. The loop works at 132.3 kHz: its error at 1 kHz stays
    // below 0.1 dB.
    const DesignFilterStyle plain;
    const VoicingMeter meter(plain);
    struct Row {
        double peak, ratio, db;
    };
    for (const auto& [peak, ratio, db] : {
             Row{0.0, 0.1, -0.0864},
             Row{0.0, 1.0, -6.0206},
             Row{0.0, 2.0, -13.979},
             Row{0.5, 1.0, 9.9458},
             Row{0.5, 2.0, -9.7371},
         })
        EXPECT_NEAR(meter.smallSignalDb({500.0, peak}, 500.0 * ratio), db, 0.1) << peak << ", " << ratio;
}

TEST(VoicingMeter, MeasuresWhatTheClipperHolds)
{
    // The default drive of 0.1 is straight to 0.1 dB at 0 dB, and lets nothing above pi / (2 * 0.1 * 0.3) =
    // 34 dB.
    const DesignFilterStyle plain;
    const VoicingMeter meter(plain);
    EXPECT_NEAR(meter.outputDb({2000.0, 0.0}, 200.0, -40.0), -40.09, 0.02);
    EXPECT_NEAR(meter.outputDb({2000.0, 0.0}, 200.0, 0.0), -0.09, 0.1);
    EXPECT_LT(meter.outputDb({2000.0, 0.0}, 200.0, 60.0), 34.4);
}

TEST(Voicing, GentleNeverSings)
{
    const FilterStyles styles;
    for (const double cutoffHz : {20.0, 60.0, 200.0, 1000.0, 5000.0, 15000.0})
        EXPECT_FALSE(ringing(styles, Gentle, cutoffHz, 1.0).sings) << cutoffHz;
}

TEST(Voicing, HardScreamsAtTheBottomBeforeAnythingElseDoes)
{
    const FilterStyles styles;
    for (const double cutoffHz : {25.0, 60.0, 200.0}) {
        for (int style = 0; style < styles.size(); ++style) {
            const auto found = ringing(styles, style, cutoffHz, 0.5);
            EXPECT_EQ(found.sings, style == Hard || style == Extreme) << style << " at " << cutoffHz;
        }
    }
    EXPECT_FALSE(ringing(styles, Hard, 2000.0, 0.5).sings);
}

TEST(Voicing, MetalRingsLongestOfAllThatDoNotSing)
{
    const FilterStyles styles;
    const double metal = ringing(styles, Metal, 1000.0, 0.5).decaySeconds;
    for (int style = 0; style < styles.size(); ++style) {
        const auto other = ringing(styles, style, 1000.0, 0.5);
        if (style != Metal && !other.sings) {
            EXPECT_GT(metal, 2.0 * other.decaySeconds) << style;
        }
    }
}

TEST(Voicing, ExtremeSingsAtEveryCutoffFromHalfThePeakOn)
{
    const FilterStyles styles;
    for (const double cutoffHz : {40.0, 500.0, 5000.0, 15000.0})
        EXPECT_TRUE(ringing(styles, Extreme, cutoffHz, 0.5).sings) << cutoffHz;
}

TEST(Voicing, TubeBendsAtTheCutoffLongBeforeItBendsElsewhere)
{
    // At -20 dB, seen against the gain at -60 dB.
    const FilterStyles styles;
    const VoicingMeter tube(styles.at(Tube));
    const FilterProbe::Setting setting{2000.0, 0.5};
    const auto lossAt = [&](double hertz) {
        return tube.smallSignalDb(setting, hertz) - 20.0 - tube.outputDb(setting, hertz, -20.0);
    };
    EXPECT_LT(lossAt(200.0), 0.5);
    EXPECT_GT(lossAt(2000.0), 3.0);
}

TEST(Voicing, SongsStandInTuneWhereNothingScreams)
{
    const FilterStyles styles;
    for (const int style : {Raw, Tube, Metal, EasyGoing}) {
        const auto found = ringing(styles, style, 1000.0, 1.0);
        EXPECT_TRUE(found.sings) << style;
        EXPECT_NEAR(found.hertz, 1000.0, 10.0) << style;
    }
}
