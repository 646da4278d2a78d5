#include "abi/Clap.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// The version macros are for the preprocessor.
#if CLAP_VERSION_LT(1, 2, 5) || !CLAP_VERSION_GE(1, 2, 5)
#error "The declarations are older than version 1.2.5"
#endif

TEST(ClapAbi, NumberedConstantsRunOnFromTheFirst)
{
    struct Row {
        std::int64_t first;
        std::vector<std::int64_t> values;
    };
    const std::vector<Row> rows{
        {0,
         {CLAP_EVENT_NOTE_ON, CLAP_EVENT_NOTE_OFF, CLAP_EVENT_NOTE_CHOKE, CLAP_EVENT_NOTE_END,
          CLAP_EVENT_NOTE_EXPRESSION, CLAP_EVENT_PARAM_VALUE, CLAP_EVENT_PARAM_MOD,
          CLAP_EVENT_PARAM_GESTURE_BEGIN, CLAP_EVENT_PARAM_GESTURE_END, CLAP_EVENT_TRANSPORT, CLAP_EVENT_MIDI,
          CLAP_EVENT_MIDI_SYSEX, CLAP_EVENT_MIDI2}},
        {0,
         {CLAP_NOTE_EXPRESSION_VOLUME, CLAP_NOTE_EXPRESSION_PAN, CLAP_NOTE_EXPRESSION_TUNING,
          CLAP_NOTE_EXPRESSION_VIBRATO, CLAP_NOTE_EXPRESSION_EXPRESSION, CLAP_NOTE_EXPRESSION_BRIGHTNESS,
          CLAP_NOTE_EXPRESSION_PRESSURE}},
        {0,
         {CLAP_PROCESS_ERROR, CLAP_PROCESS_CONTINUE, CLAP_PROCESS_CONTINUE_IF_NOT_QUIET, CLAP_PROCESS_TAIL,
          CLAP_PROCESS_SLEEP}},
        {0, {CLAP_PRESET_DISCOVERY_LOCATION_FILE, CLAP_PRESET_DISCOVERY_LOCATION_PLUGIN}},
        {0,
         {CLAP_LOG_DEBUG, CLAP_LOG_INFO, CLAP_LOG_WARNING, CLAP_LOG_ERROR, CLAP_LOG_FATAL,
          CLAP_LOG_HOST_MISBEHAVING, CLAP_LOG_PLUGIN_MISBEHAVING}},
        {0, {CLAP_CONTEXT_MENU_TARGET_KIND_GLOBAL, CLAP_CONTEXT_MENU_TARGET_KIND_PARAM}},
        {0,
         {CLAP_CONTEXT_MENU_ITEM_ENTRY, CLAP_CONTEXT_MENU_ITEM_CHECK_ENTRY, CLAP_CONTEXT_MENU_ITEM_SEPARATOR,
          CLAP_CONTEXT_MENU_ITEM_BEGIN_SUBMENU, CLAP_CONTEXT_MENU_ITEM_END_SUBMENU,
          CLAP_CONTEXT_MENU_ITEM_TITLE}},
        {1,
         {CLAP_PROJECT_LOCATION_PROJECT, CLAP_PROJECT_LOCATION_TRACK_GROUP, CLAP_PROJECT_LOCATION_TRACK,
          CLAP_PROJECT_LOCATION_DEVICE, CLAP_PROJECT_LOCATION_NESTED_DEVICE_CHAIN}},
        {1,
         {CLAP_PROJECT_LOCATION_INSTUMENT_TRACK, CLAP_PROJECT_LOCATION_AUDIO_TRACK,
          CLAP_PROJECT_LOCATION_HYBRID_TRACK, CLAP_PROJECT_LOCATION_RETURN_TRACK,
          CLAP_PROJECT_LOCATION_MASTER_TRACK}},
    };
    for (const auto& [first, values] : rows)
        for (std::size_t i = 0; i < values.size(); ++i)
            EXPECT_EQ(values[i], first + static_cast<std::int64_t>(i)) << values.size() << " constants";
}

TEST(ClapAbi, FlagsTakeOneBitAfterTheOther)
{
    const std::vector<std::vector<std::int64_t>> rows{
        {CLAP_EVENT_IS_LIVE, CLAP_EVENT_DONT_RECORD},
        {CLAP_TRANSPORT_HAS_TEMPO, CLAP_TRANSPORT_HAS_BEATS_TIMELINE, CLAP_TRANSPORT_HAS_SECONDS_TIMELINE,
         CLAP_TRANSPORT_HAS_TIME_SIGNATURE, CLAP_TRANSPORT_IS_PLAYING, CLAP_TRANSPORT_IS_RECORDING,
         CLAP_TRANSPORT_IS_LOOP_ACTIVE, CLAP_TRANSPORT_IS_WITHIN_PRE_ROLL},
        {CLAP_PRESET_DISCOVERY_IS_FACTORY_CONTENT, CLAP_PRESET_DISCOVERY_IS_USER_CONTENT,
         CLAP_PRESET_DISCOVERY_IS_DEMO_CONTENT, CLAP_PRESET_DISCOVERY_IS_FAVORITE},
        {CLAP_AUDIO_PORT_IS_MAIN, CLAP_AUDIO_PORT_SUPPORTS_64BITS, CLAP_AUDIO_PORT_PREFERS_64BITS,
         CLAP_AUDIO_PORT_REQUIRES_COMMON_SAMPLE_SIZE},
        {CLAP_AUDIO_PORTS_RESCAN_NAMES, CLAP_AUDIO_PORTS_RESCAN_FLAGS, CLAP_AUDIO_PORTS_RESCAN_CHANNEL_COUNT,
         CLAP_AUDIO_PORTS_RESCAN_PORT_TYPE, CLAP_AUDIO_PORTS_RESCAN_IN_PLACE_PAIR,
         CLAP_AUDIO_PORTS_RESCAN_LIST},
        {CLAP_NOTE_DIALECT_CLAP, CLAP_NOTE_DIALECT_MIDI, CLAP_NOTE_DIALECT_MIDI_MPE, CLAP_NOTE_DIALECT_MIDI2},
        {CLAP_NOTE_PORTS_RESCAN_ALL, CLAP_NOTE_PORTS_RESCAN_NAMES},
        {CLAP_PARAM_IS_STEPPED, CLAP_PARAM_IS_PERIODIC, CLAP_PARAM_IS_HIDDEN, CLAP_PARAM_IS_READONLY,
         CLAP_PARAM_IS_BYPASS, CLAP_PARAM_IS_AUTOMATABLE, CLAP_PARAM_IS_AUTOMATABLE_PER_NOTE_ID,
         CLAP_PARAM_IS_AUTOMATABLE_PER_KEY, CLAP_PARAM_IS_AUTOMATABLE_PER_CHANNEL,
         CLAP_PARAM_IS_AUTOMATABLE_PER_PORT, CLAP_PARAM_IS_MODULATABLE, CLAP_PARAM_IS_MODULATABLE_PER_NOTE_ID,
         CLAP_PARAM_IS_MODULATABLE_PER_KEY, CLAP_PARAM_IS_MODULATABLE_PER_CHANNEL,
         CLAP_PARAM_IS_MODULATABLE_PER_PORT, CLAP_PARAM_REQUIRES_PROCESS, CLAP_PARAM_IS_ENUM},
        {CLAP_PARAM_RESCAN_VALUES, CLAP_PARAM_RESCAN_TEXT, CLAP_PARAM_RESCAN_INFO, CLAP_PARAM_RESCAN_ALL},
        {CLAP_PARAM_CLEAR_ALL, CLAP_PARAM_CLEAR_AUTOMATIONS, CLAP_PARAM_CLEAR_MODULATIONS},
        {CLAP_POSIX_FD_READ, CLAP_POSIX_FD_WRITE, CLAP_POSIX_FD_ERROR},
        {CLAP_TRACK_INFO_HAS_TRACK_NAME, CLAP_TRACK_INFO_HAS_TRACK_COLOR, CLAP_TRACK_INFO_HAS_AUDIO_CHANNEL,
         CLAP_TRACK_INFO_IS_FOR_RETURN_TRACK, CLAP_TRACK_INFO_IS_FOR_BUS, CLAP_TRACK_INFO_IS_FOR_MASTER},
        {CLAP_PROJECT_LOCATION_HAS_INDEX, CLAP_PROJECT_LOCATION_HAS_COLOR},
    };
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t bit = 0; bit < rows[row].size(); ++bit)
            EXPECT_EQ(rows[row][bit], std::int64_t{1} << bit) << "row " << row;
}

TEST(ClapAbi, SingleConstantsHaveTheirPublishedValue)
{
    EXPECT_EQ(CLAP_CORE_EVENT_SPACE_ID, 0);
    EXPECT_EQ(CLAP_INVALID_ID, 4294967295U);        // 2^32 - 1
    EXPECT_EQ(CLAP_BEATTIME_FACTOR, 2147483648LL);  // 2^31
    EXPECT_EQ(CLAP_SECTIME_FACTOR, 2147483648LL);
    EXPECT_EQ(CLAP_TIMESTAMP_UNKNOWN, 0U);
    EXPECT_EQ(static_cast<int>(CLAP_NAME_SIZE), 256);
    EXPECT_EQ(static_cast<int>(CLAP_PATH_SIZE), 1024);
    EXPECT_EQ(CLAP_COLOR_TRANSPARENT.alpha, 0);
}

TEST(ClapAbi, IdsAreThePublishedTexts)
{
    struct Row {
        std::string id;
        std::string expected;
    };
    for (const auto& [id, expected] : {
             Row{CLAP_PLUGIN_FACTORY_ID, "clap.plugin-factory"},
             Row{CLAP_PRESET_DISCOVERY_FACTORY_ID, "clap.preset-discovery-factory/2"},
             Row{CLAP_PRESET_DISCOVERY_FACTORY_ID_COMPAT, "clap.preset-discovery-factory/draft-2"},
             Row{CLAP_EXT_AUDIO_PORTS, "clap.audio-ports"},
             Row{CLAP_EXT_AUDIO_PORTS_CONFIG, "clap.audio-ports-config"},
             Row{CLAP_EXT_AUDIO_PORTS_CONFIG_INFO, "clap.audio-ports-config-info/1"},
             Row{CLAP_EXT_AUDIO_PORTS_CONFIG_INFO_COMPAT, "clap.audio-ports-config-info/draft-0"},
             Row{CLAP_EXT_NOTE_PORTS, "clap.note-ports"},
             Row{CLAP_EXT_PARAMS, "clap.params"},
             Row{CLAP_EXT_GUI, "clap.gui"},
             Row{CLAP_EXT_STATE, "clap.state"},
             Row{CLAP_EXT_LATENCY, "clap.latency"},
             Row{CLAP_EXT_TAIL, "clap.tail"},
             Row{CLAP_EXT_THREAD_CHECK, "clap.thread-check"},
             Row{CLAP_EXT_LOG, "clap.log"},
             Row{CLAP_EXT_TIMER_SUPPORT, "clap.timer-support"},
             Row{CLAP_EXT_POSIX_FD_SUPPORT, "clap.posix-fd-support"},
             Row{CLAP_EXT_CONTEXT_MENU, "clap.context-menu/1"},
             Row{CLAP_EXT_CONTEXT_MENU_COMPAT, "clap.context-menu.draft/0"},
             Row{CLAP_EXT_TRACK_INFO, "clap.track-info/1"},
             Row{CLAP_EXT_TRACK_INFO_COMPAT, "clap.track-info.draft/1"},
             Row{CLAP_EXT_PRESET_LOAD, "clap.preset-load/2"},
             Row{CLAP_EXT_PRESET_LOAD_COMPAT, "clap.preset-load.draft/2"},
             Row{CLAP_EXT_PROJECT_LOCATION, "clap.project-location/2"},
             Row{CLAP_EXT_GAIN_ADJUSTMENT_METERING, "clap.gain-adjustment-metering/0"},
             Row{CLAP_PORT_MONO, "mono"},
             Row{CLAP_PORT_STEREO, "stereo"},
             Row{CLAP_PORT_SURROUND, "surround"},
             Row{CLAP_WINDOW_API_WIN32, "win32"},
             Row{CLAP_WINDOW_API_COCOA, "cocoa"},
             Row{CLAP_WINDOW_API_X11, "x11"},
             Row{CLAP_WINDOW_API_WAYLAND, "wayland"},
         })
        EXPECT_EQ(id, expected);
}

TEST(ClapAbi, FeaturesAreTheirNamesInLowerCaseWithHyphens)
{
#define FEATURE(name)                                                                                        \
    Row { #name, CLAP_PLUGIN_FEATURE_##name }
    struct Row {
        std::string name;
        std::string feature;
    };
    const std::vector<Row> rows{FEATURE(INSTRUMENT),
                                FEATURE(AUDIO_EFFECT),
                                FEATURE(NOTE_EFFECT),
                                FEATURE(NOTE_DETECTOR),
                                FEATURE(ANALYZER),
                                FEATURE(SYNTHESIZER),
                                FEATURE(SAMPLER),
                                FEATURE(DRUM),
                                FEATURE(DRUM_MACHINE),
                                FEATURE(FILTER),
                                FEATURE(PHASER),
                                FEATURE(EQUALIZER),
                                FEATURE(PHASE_VOCODER),
                                FEATURE(GRANULAR),
                                FEATURE(FREQUENCY_SHIFTER),
                                FEATURE(PITCH_SHIFTER),
                                FEATURE(PITCH_CORRECTION),
                                FEATURE(DISTORTION),
                                FEATURE(TRANSIENT_SHAPER),
                                FEATURE(COMPRESSOR),
                                FEATURE(EXPANDER),
                                FEATURE(GATE),
                                FEATURE(LIMITER),
                                FEATURE(TREMOLO),
                                FEATURE(FLANGER),
                                FEATURE(CHORUS),
                                FEATURE(DELAY),
                                FEATURE(REVERB),
                                FEATURE(GLITCH),
                                FEATURE(UTILITY),
                                FEATURE(RESTORATION),
                                FEATURE(MULTI_EFFECTS),
                                FEATURE(MIXING),
                                FEATURE(MASTERING),
                                FEATURE(MONO),
                                FEATURE(STEREO),
                                FEATURE(SURROUND),
                                FEATURE(AMBISONIC)};
#undef FEATURE
    for (const auto& [name, feature] : rows) {
        std::string expected;
        for (const char letter : name)
            expected += letter == '_' ? '-' : static_cast<char>(letter - 'A' + 'a');
        EXPECT_EQ(feature, expected);
    }
    EXPECT_STREQ(CLAP_PLUGIN_FEATURE_DEESSER, "de-esser");  // the one with a hyphen of its own
}

TEST(ClapAbi, VersionsCompareByMajorThenMinorThenRevision)
{
    constexpr std::uint32_t major = CLAP_VERSION_MAJOR;
    constexpr std::uint32_t minor = CLAP_VERSION_MINOR;
    constexpr std::uint32_t revision = CLAP_VERSION_REVISION;
    struct Row {
        std::uint32_t major, minor, revision;
        bool ours_is_less, equal;
    };
    for (const Row& other :
         {Row{major, minor, revision, false, true}, Row{major, minor, revision + 1, true, false},
          Row{1, 2, 4, false, false}, Row{major, minor + 1, 0, true, false},
          Row{major, minor - 1, revision + 1, false, false}, Row{major + 1, 0, 0, true, false},
          Row{major - 1, minor + 1, revision + 1, false, false}}) {
        EXPECT_EQ(CLAP_VERSION_LT(other.major, other.minor, other.revision), other.ours_is_less);
        EXPECT_EQ(CLAP_VERSION_GE(other.major, other.minor, other.revision), !other.ours_is_less);
        EXPECT_EQ(CLAP_VERSION_EQ(other.major, other.minor, other.revision), other.equal);
    }
    EXPECT_EQ(CLAP_VERSION.major, major);
    EXPECT_EQ(CLAP_VERSION.minor, minor);
    EXPECT_EQ(CLAP_VERSION.revision, revision);
}

TEST(ClapAbi, VersionsWithMajorZeroAreIncompatible)
{
    EXPECT_FALSE(clap_version_is_compatible({0, 27, 1}));
    EXPECT_TRUE(clap_version_is_compatible({1, 0, 0}));
    EXPECT_TRUE(clap_version_is_compatible({2, 0, 0}));
    EXPECT_TRUE(clap_version_is_compatible(CLAP_VERSION));
}
