#include "audition/PresetAudition.h"
#include "audition/PresetSettings.h"
#include "clap_host/ClapModule.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

/// Hears a preset on material that is made here.
AuditionResult hear(const std::string& parameters)
{
    const TemporaryFolder folder;  // without recordings
    folder.write("a.mvp",
                 "[Preset]\nSignature=MStd\nVersion=5\nDescription=A test\n[Parameters]\n" + parameters);
    const ClapModule module(SORDELIN_MODULE);
    std::vector<ClapEvent> values;
    {
        ClapInstance instance(module);
        values = defaultEvents(instance.parameters());
        applySource(values, instance.parameters(), readFactorySource(folder / "a.mvp", ""));
    }
    std::vector<Material> materials = auditionMaterials(folder / "");
    const AuditionRenderer renderer(module, 2.0);
    return PresetAudition(renderer, materials).hear(values);
}

}  // namespace

TEST(Materials, AreLongEnoughAndAtTheirLevel)
{
    const TemporaryFolder empty;
    for (const Material& material : auditionMaterials(empty / "")) {
        EXPECT_DOUBLE_EQ(material.sound.seconds(), materialSeconds) << material.name;
        float peak = 0.0f;
        for (const float sample : material.sound.left)
            peak = std::max(peak, std::abs(sample));
        EXPECT_FLOAT_EQ(peak, 0.5f) << material.name;
    }
}

TEST(PresetAudition, HearsOneEchoWhereItIs)
{
    // Delay 1 on the left at 210 ms, delay 2 on the right at 410 ms, 12 dB below the input, no feedback.
    const AuditionResult result =
        hear("Delay 1 Time=210 ms\nDelay 2 Time=410 ms\nDelay 1 Pan=-1\nDelay 2 Pan=1\n"
             "Filter 1 Enabled=Disabled\nFilter 2 Enabled=Disabled\nWet Level=-12 dB\n");
    const std::size_t right = result.echoes.size() / 2;  // steps of 20 ms, left then right
    for (std::size_t i = 0; i < result.echoes.size(); ++i) {
        const bool sounds = i == 10 || i == right + 20;
        EXPECT_NEAR(result.echoes[i], sounds ? 0.0 : -48.0, 0.1) << i;
    }
    ASSERT_EQ(result.materials.size(), 4u);
    for (const MaterialResult& material : result.materials) {
        EXPECT_NEAR(material.wetDb, -12.0, 2.0);  // a part of it comes behind the input
        EXPECT_LE(material.tail.seconds, 0.45);
        EXPECT_FALSE(material.grows);
        EXPECT_TRUE(material.finite);
    }
    EXPECT_NEAR(result.materials[3].tail.seconds, 0.41, 0.05);  // the pad sounds to its end
    EXPECT_EQ(result.picture.spectrogram.size(),
              static_cast<std::size_t>(PresetPicture::columns) * PresetPicture::rows);
}

TEST(PresetAudition, TellsDryFromWet)
{
    const AuditionResult result = hear("Wet Level=-INF dB\n");
    for (const MaterialResult& material : result.materials) {
        EXPECT_NEAR(material.levelDb, 0.0, 1e-3);
        EXPECT_NEAR(material.peak, 0.5, 1e-5);
        EXPECT_LT(material.wetDb, -100.0);
    }
}
