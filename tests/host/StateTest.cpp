// What a project keeps of an instance, and presets, through the built module.
#include "PluginPlayer.h"
#include "clap_host/InstanceState.h"
#include "support/Signals.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <fstream>
#include <random>

namespace {

std::int32_t intAt(const std::string& bytes, std::size_t offset)
{
    std::int32_t value = 0;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

void putInt(std::string& bytes, std::int32_t value)
{
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

std::vector<double> values(ClapInstance& instance)
{
    std::vector<double> all;
    for (const ClapParameter& parameter : instance.parameters().list())
        all.push_back(instance.parameters().value(parameter.id));
    return all;
}

/// Every parameter anywhere in its range.
void setAtRandom(ClapInstance& instance, unsigned seed)
{
    std::minstd_rand random(seed);
    EventList events;
    for (const ClapParameter& parameter : instance.parameters().list()) {
        const double place = static_cast<double>(random() % 100003) / 100003.0;
        events.add(parameterEvent(0, parameter.id,
                                  parameter.minimum + place * (parameter.maximum - parameter.minimum)));
    }
    instance.flush(events);
}

}  // namespace

TEST(State, ComesBackBitByBitAndSavesToTheSameBytes)
{
    const ClapModule module(SORDELIN_MODULE);
    std::string state;
    std::vector<double> saved;
    {
        ClapInstance instance(module);
        setAtRandom(instance, 5);
        state = saveState(instance).value();
        EXPECT_TRUE(saveState(instance, 7) == state);
        saved = values(instance);
    }
    // Another instance, which may take the name of the one that is gone.
    ClapInstance loaded(module);
    ASSERT_TRUE(loadState(loaded, state, 3));
    EXPECT_EQ(values(loaded), saved);
    EXPECT_TRUE(saveState(loaded) == state);
    EXPECT_EQ(loaded.host().calls.rescans, 1);
    EXPECT_EQ(loaded.host().calls.rescanFlags, static_cast<std::uint32_t>(CLAP_PARAM_RESCAN_VALUES));

    // The layout, byte for byte.
    const auto count = static_cast<std::int32_t>(saved.size());
    const auto extension = 12 + 4 * static_cast<std::size_t>(count);
    EXPECT_EQ(state.substr(0, 4), "MVBS");
    EXPECT_EQ(intAt(state, 4), 1);
    EXPECT_EQ(intAt(state, 8), count);
    for (int i = 0; i < count; ++i) {
        float value = 0.0f;
        std::memcpy(&value, state.data() + 12 + 4 * i, sizeof value);
        ASSERT_EQ(static_cast<double>(value), saved[static_cast<std::size_t>(i)]);
    }
    EXPECT_EQ(state.substr(extension, 4), "MStd");
    EXPECT_EQ(intAt(state, extension + 4), 3);
    const auto track = state.find("CuSV");
    ASSERT_NE(track, std::string::npos);
    EXPECT_EQ(intAt(state, track - 4), 1);  // modified
    EXPECT_TRUE(state.ends_with(std::string("\x0e\0\0\0_PerTrackIndex\x02\0\0\0-1", 24)));
}

TEST(State, ReadsProjectsOfOtherVersions)
{
    const ClapModule module(SORDELIN_MODULE);
    ClapInstance saved(module);
    setAtRandom(saved, 6);
    const std::string state = saveState(saved).value();
    const std::vector<double> expected = values(saved);
    const std::size_t count = expected.size();
    const std::string tail = state.substr(12 + 4 * count);
    const std::string shortTail = [&] {  // of version 2, which ends with the modified flag
        std::string cut = tail.substr(0, tail.find("CuSV"));
        cut[4] = 2;
        return cut;
    }();
    const auto withCount = [&](std::size_t stored, const std::string& end) {
        std::string bytes = state.substr(0, 8);
        putInt(bytes, static_cast<std::int32_t>(stored));
        for (std::size_t i = 0; i < stored; ++i)
            bytes += i < count ? state.substr(12 + 4 * i, 4) : std::string(4, '\x3f');
        return bytes + end;
    };
    struct Row {
        std::string bytes;
        std::size_t known;
        bool loads;
    };
    for (const auto& [bytes, known, loads] :
         {Row{withCount(count, tail), count, true}, Row{withCount(count + 9, tail), count, true},
          Row{withCount(600, tail), 600, true}, Row{withCount(count, shortTail), count, true},
          // Without the last block's magic what follows it is left alone.
          Row{withCount(count, tail.substr(0, tail.find("CuSV")) + "CuSW1234"), count, true},
          // Another plug-in's extension, and none at all: the values stay, but it isn't a state.
          Row{withCount(count, "MDly" + tail.substr(4)), count, false},
          Row{withCount(count, ""), count, false}}) {
        ClapInstance loaded(module);
        EXPECT_EQ(loadState(loaded, bytes), loads);
        const std::vector<double> found = values(loaded);
        for (std::size_t i = 0; i < count; ++i)
            ASSERT_EQ(found[i], i < known ? expected[i] : loaded.parameters().list()[i].defaultValue) << i;
    }
}

TEST(State, DamagedBytesDoNoHarm)
{
    const ClapModule module(SORDELIN_MODULE);
    ClapInstance instance(module);
    const std::string fresh = saveState(instance).value();
    setAtRandom(instance, 7);
    const std::string state = saveState(instance).value();
    // Where the block of custom values should begin, a state may also end: it has none then.
    const std::size_t block = state.find("CuSV");
    for (std::size_t length = 0; length < state.size(); length += length < 64 || length > 2800 ? 1 : 97)
        EXPECT_EQ(loadState(instance, state.substr(0, length)), length >= block && length < block + 4)
            << length;
    std::minstd_rand random(8);
    for (int i = 0; i < 2000; ++i) {
        std::string bytes = state;
        for (unsigned flips = random() % 8 + 1; flips > 0; --flips) {
            // Lengths and counts suffer more often than values.
            const std::size_t place = random() % 2 ? random() % bytes.size() : random() % 12;
            bytes[random() % 4 ? place : bytes.size() - 1 - place % 80] = static_cast<char>(random() % 256);
        }
        loadState(instance, bytes);
    }
    for (const ClapParameter& parameter : instance.parameters().list()) {
        const double value = instance.parameters().value(parameter.id);
        EXPECT_TRUE(value >= parameter.minimum && value <= parameter.maximum) << parameter.name;
    }
    EXPECT_TRUE(loadState(instance, fresh));
    EXPECT_TRUE(saveState(instance)->substr(0, 12 + 4 * 705) == fresh.substr(0, 12 + 4 * 705));
    EXPECT_TRUE(instance.host().violations().empty());
}

TEST(State, APresetLoadedWhilePlayingLetsTheTailRingAndTellsTheHost)
{
    TemporaryFolder folder;
    const std::string preset = folder / "Quiet \xc3\xa9.mvp";
    std::ofstream(preset) << "[Preset]\nSignature=MStd\nVersion=5\n\n[Parameters]\nDry Level=0\n";
    PluginPlayer player;
    player.disableFilters();
    player.set("Delay 1 Time", "500 ms");
    std::vector<float> click(12000, 0.0f);
    click[0] = 0.5f;
    player.play(click);

    HostCalls& calls = player.instance.host().calls;
    const int rescans = calls.rescans;
    ASSERT_TRUE(loadPresetFile(player.instance, preset));
    EXPECT_EQ(calls.loadedPresets, std::vector<std::string>{preset});
    EXPECT_EQ(calls.rescans, rescans + 1);
    EXPECT_EQ(calls.dirtyMarks, 1);
    EXPECT_EQ(player.instance.parameters().value(player.id("Dry Level")), 0.0);
    // Half a second after the click it comes, though the preset came between: the ring hasn't been emptied.
    const auto out = player.play(std::vector<float>(24000, 0.0f));
    EXPECT_GT(signals::rms(out, 0, 24000), 1e-4);

    EXPECT_FALSE(loadPresetFile(player.instance, folder / "None.mvp"));
    ASSERT_EQ(calls.presetErrors.size(), 1u);
    EXPECT_EQ(calls.presetErrors[0], "Incorrect file permissions or corrupt preset file.");
    EXPECT_EQ(calls.loadedPresets.size(), 1u);
    EXPECT_TRUE(player.instance.host().violations().empty());
}
