#include "audition/PresetVerdicts.h"

#include <gtest/gtest.h>

namespace {

AuditionResult goodResult()
{
    MaterialResult material;
    material.levelDb = 1.0;
    material.wetDb = -9.0;
    material.peak = 0.7;
    material.octavesDb = {-20.0, -10.0, -5.0, -3.0, -6.0, -12.0, -20.0, -30.0};
    AuditionResult result;
    result.materials = {material, material};
    result.echoes.assign(100, -48.0);
    result.echoes[17] = 0.0;
    return result;
}

/// Unlike the good one: its echo comes later.
AuditionResult otherResult()
{
    AuditionResult result = goodResult();
    std::swap(result.echoes[17], result.echoes[60]);
    return result;
}

std::vector<std::string> faultsOf(const AuditionResult& result)
{
    return judge({result, otherResult()}).front().faults;
}

}  // namespace

TEST(PresetVerdicts, LetsGoodPresetsPass)
{
    const std::vector<PresetVerdict> verdicts = judge({goodResult(), otherResult()});
    EXPECT_TRUE(verdicts[0].faults.empty());
    EXPECT_EQ(verdicts[0].nearest, 1u);
    // Two of 100 steps differ by 48 dB: the root of 2 * 48^2 / 100, in steps of 3 dB.
    EXPECT_NEAR(verdicts[0].distance, 2.263, 0.001);
    EXPECT_EQ(judge({goodResult()}).front().nearest, 0u);
}

TEST(PresetVerdicts, FlagsEachFault)
{
    AuditionResult silent = goodResult();
    silent.materials[0].wetDb = silent.materials[1].wetDb = -60.0;
    EXPECT_EQ(faultsOf(silent), std::vector<std::string>{"silent"});
    silent.materials[1].wetDb = -20.0;  // one material is enough
    EXPECT_TRUE(faultsOf(silent).empty());

    AuditionResult loud = goodResult();
    loud.materials[1].peak = 1.4125;
    EXPECT_EQ(faultsOf(loud), std::vector<std::string>{"clips: +3.0 dBFS"});

    AuditionResult growing = goodResult();
    growing.materials[0].grows = true;
    EXPECT_EQ(faultsOf(growing), std::vector<std::string>{"runs away"});

    AuditionResult broken = goodResult();
    broken.materials[0].finite = false;
    EXPECT_EQ(faultsOf(broken), std::vector<std::string>{"broken: samples that are no numbers"});
}

TEST(PresetVerdicts, FlagsBothOfTwoThatSoundAlike)
{
    AuditionResult twin = goodResult();
    twin.materials[0].wetDb += 0.5;
    const std::vector<PresetVerdict> verdicts = judge({goodResult(), otherResult(), twin});
    EXPECT_EQ(verdicts[0].faults.size(), 1u);
    EXPECT_EQ(verdicts[0].nearest, 2u);
    EXPECT_TRUE(verdicts[1].faults.empty());
    EXPECT_EQ(verdicts[2].faults.size(), 1u);
}
