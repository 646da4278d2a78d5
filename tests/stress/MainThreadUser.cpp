#include "stress/MainThreadUser.h"

#include "clap_host/InstanceState.h"
#include "stress/DamagedState.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::size_t keptStates = 8;

}  // namespace

MainThreadUser::MainThreadUser(ClapInstance& used, Random& numbers, std::vector<std::string> presetFiles)
    : instance(used),
      random(numbers),
      presets(std::move(presetFiles)),
      params(*used.extension<clap_plugin_params_t>(CLAP_EXT_PARAMS))
{
    keepState();
}

std::vector<std::string> MainThreadUser::presetsOfHome()
{
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(std::getenv("HOME"))) {
        if (entry.is_regular_file() &&
            entry.path().parent_path().string().find("/Presets/") != std::string::npos)
            found.push_back(entry.path().string());
    }
    std::sort(found.begin(), found.end());
    return found;
}

void MainThreadUser::act()
{
    // The quick ones more often than those that go to the disk.
    using Act = void (MainThreadUser::*)();
    static constexpr Act acts[] = {
        &MainThreadUser::readParameters, &MainThreadUser::convertValues,
        &MainThreadUser::readTexts,      &MainThreadUser::readParameters,
        &MainThreadUser::convertValues,  &MainThreadUser::readTexts,
        &MainThreadUser::serveMainLoop,  &MainThreadUser::serveMainLoop,
        &MainThreadUser::askForPorts,    &MainThreadUser::keepState,
        &MainThreadUser::restoreState,   &MainThreadUser::loadPreset,
        &MainThreadUser::loadNoPreset,   &MainThreadUser::restoreDamagedState,
        &MainThreadUser::tellTheTrack,   &MainThreadUser::askForExtensions,
    };
    (this->*random.pick(acts))();
}

clap_id MainThreadUser::anyParameter() { return random.below(params.count(&instance.plugin())); }

void MainThreadUser::readParameters()
{
    const clap_plugin_t* plugin = &instance.plugin();
    for (int i = 0; i < 40; ++i) {
        clap_param_info_t info{};
        const clap_id id = anyParameter();
        EXPECT_TRUE(params.get_info(plugin, id, &info));
        double value = notANumber;
        EXPECT_TRUE(params.get_value(plugin, info.id, &value));
        EXPECT_TRUE(value >= info.min_value && value <= info.max_value) << info.name << " is " << value;
    }
    clap_param_info_t info{};
    double value = 0.0;
    for (const clap_id unknown : {params.count(plugin), 0x7FFFFFFFu, 0x80000000u, CLAP_INVALID_ID}) {
        EXPECT_FALSE(params.get_info(plugin, unknown, &info));
        EXPECT_FALSE(params.get_value(plugin, unknown, &value));
    }
}

void MainThreadUser::convertValues()
{
    const clap_plugin_t* plugin = &instance.plugin();
    const double strange[] = {notANumber, infinity, -infinity, 1e300, -1e300, 1e-310, 0.0, random.unit()};
    for (int i = 0; i < 10; ++i) {
        char text[64];
        std::memset(text, '#', sizeof text);
        const std::uint32_t capacity = 1 + random.below(sizeof text - 1);
        EXPECT_TRUE(params.value_to_text(plugin, anyParameter(), random.pick(strange), text, capacity));
        EXPECT_NE(std::memchr(text, 0, capacity), nullptr);
        EXPECT_EQ(text[capacity], '#');
    }
    char text[4] = "abc";
    EXPECT_FALSE(params.value_to_text(plugin, CLAP_INVALID_ID, 0.0, text, sizeof text));
    EXPECT_FALSE(params.value_to_text(plugin, 0, 0.0, text, 0));
    EXPECT_STREQ(text, "abc");
}

void MainThreadUser::readTexts()
{
    const clap_plugin_t* plugin = &instance.plugin();
    const std::string texts[] = {"",     "1e999",  "-1e999", "nan",     "inf",       "0,5",
                                 "50 %", "-6 dB",  "A4",     "1/4D",    "Disabled",  std::string(5000, '9'),
                                 "\xFF", "12 kHz", " 3 sec", "1..2.3.", "0x1p1023x", std::string(300, ' ')};
    for (int i = 0; i < 10; ++i) {
        const clap_id id = anyParameter();
        clap_param_info_t info{};
        params.get_info(plugin, id, &info);
        double value = notANumber;
        if (params.text_to_value(plugin, id, random.pick(texts).c_str(), &value)) {
            EXPECT_TRUE(value >= info.min_value && value <= info.max_value)
                << info.name << " read as " << value;
        }
    }
    double value = 0.0;
    EXPECT_FALSE(params.text_to_value(plugin, CLAP_INVALID_ID, "1", &value));
}

void MainThreadUser::keepState()
{
    const auto state = saveState(instance, 1 + random.below(5000));
    ASSERT_TRUE(state);
    if (states.size() < keptStates)
        states.push_back(*state);
    else
        random.pick(states) = *state;
}

void MainThreadUser::restoreState()
{
    EXPECT_TRUE(loadState(instance, random.pick(states), 1 + random.below(5000)));
}

void MainThreadUser::restoreDamagedState()
{
    loadState(instance, damaged(random.pick(states), random), 1 + random.below(5000));
    // A host whose disk is full, or whose file can't be read.
    const auto* table = instance.extension<clap_plugin_state_t>(CLAP_EXT_STATE);
    const clap_ostream_t full{
        nullptr, [](const clap_ostream_t*, const void*, std::uint64_t) -> std::int64_t { return -1; }};
    const clap_istream_t unreadable{
        nullptr, [](const clap_istream_t*, void*, std::uint64_t) -> std::int64_t { return -1; }};
    EXPECT_FALSE(table->save(&instance.plugin(), &full));
    EXPECT_FALSE(table->load(&instance.plugin(), &unreadable));
}

void MainThreadUser::loadPreset()
{
    if (presets.empty())
        return;
    const std::string& preset = random.pick(presets);
    EXPECT_TRUE(loadPresetFile(instance, preset)) << preset;
    instance.host().calls.loadedPresets.clear();
}

void MainThreadUser::loadNoPreset()
{
    const auto* table = instance.extension<clap_plugin_preset_load_t>(CLAP_EXT_PRESET_LOAD);
    const clap_plugin_t* plugin = &instance.plugin();
    EXPECT_FALSE(table->from_location(plugin, CLAP_PRESET_DISCOVERY_LOCATION_FILE, nullptr, nullptr));
    EXPECT_FALSE(table->from_location(plugin, CLAP_PRESET_DISCOVERY_LOCATION_FILE, "/", nullptr));
    EXPECT_FALSE(table->from_location(plugin, CLAP_PRESET_DISCOVERY_LOCATION_FILE, "", "key"));
    EXPECT_FALSE(table->from_location(plugin, CLAP_PRESET_DISCOVERY_LOCATION_PLUGIN, nullptr, "key"));
    EXPECT_FALSE(table->from_location(plugin, 77, "/dev/null", nullptr));
    instance.host().calls.presetErrors.clear();
}

void MainThreadUser::askForPorts()
{
    EXPECT_EQ(instance.inputPorts().size(), 2u);
    EXPECT_EQ(instance.outputPorts().size(), 1u);
    EXPECT_EQ(instance.latency(), 0u);
    EXPECT_GE(instance.tail(), 0x7FFFFFFFu);
    const clap_plugin_t* plugin = &instance.plugin();
    const auto* ports = instance.extension<clap_plugin_audio_ports_t>(CLAP_EXT_AUDIO_PORTS);
    const auto* notes = instance.extension<clap_plugin_note_ports_t>(CLAP_EXT_NOTE_PORTS);
    const auto* configs = instance.extension<clap_plugin_audio_ports_config_t>(CLAP_EXT_AUDIO_PORTS_CONFIG);
    const auto* infos =
        instance.extension<clap_plugin_audio_ports_config_info_t>(CLAP_EXT_AUDIO_PORTS_CONFIG_INFO);
    clap_audio_port_info_t port{};
    clap_note_port_info_t note{};
    clap_audio_ports_config_t config{};
    for (const std::uint32_t beyond : {2u, 0x80000000u, 0xFFFFFFFFu}) {
        EXPECT_FALSE(ports->get(plugin, beyond, true, &port));
        EXPECT_FALSE(ports->get(plugin, beyond, false, &port));
        EXPECT_FALSE(notes->get(plugin, beyond, true, &note));
        EXPECT_FALSE(configs->get(plugin, beyond, &config));
        EXPECT_FALSE(infos->get(plugin, 99, beyond, true, &port));
    }
    EXPECT_TRUE(configs->get(plugin, 0, &config));
    EXPECT_EQ(infos->current_config(plugin), config.id);
    EXPECT_TRUE(infos->get(plugin, config.id, 0, false, &port));
}

void MainThreadUser::askForExtensions()
{
    const clap_plugin_t* plugin = &instance.plugin();
    for (const char* unknown : {"", "clap", "clap.params ", "clap.PARAMS", "clap.preset-load/3", "\xFF"})
        EXPECT_EQ(plugin->get_extension(plugin, unknown), nullptr);
    EXPECT_EQ(plugin->get_extension(plugin, std::string(70000, 'x').c_str()), nullptr);
}

void MainThreadUser::serveMainLoop()
{
    const clap_plugin_t* plugin = &instance.plugin();
    const auto* timers = instance.extension<clap_plugin_timer_support_t>(CLAP_EXT_TIMER_SUPPORT);
    const auto* descriptors = instance.extension<clap_plugin_posix_fd_support_t>(CLAP_EXT_POSIX_FD_SUPPORT);
    instance.runMainThread();
    timers->on_timer(plugin, random.bits());  // of somebody else
    descriptors->on_fd(plugin, -1, CLAP_POSIX_FD_READ);
    plugin->on_main_thread(plugin);  // hosts that call it unasked
}

void MainThreadUser::tellTheTrack()
{
    const clap_plugin_t* plugin = &instance.plugin();
    instance.extension<clap_plugin_track_info_t>(CLAP_EXT_TRACK_INFO)->changed(plugin);
    const auto* locations = instance.extension<clap_plugin_project_location_t>(CLAP_EXT_PROJECT_LOCATION);
    clap_project_location_element_t elements[3]{};
    for (auto& element : elements) {
        element.kind = random.below(5);
        element.index = random.bits();
        std::memset(element.name, 'n', sizeof element.name);  // no end in sight
        std::memset(element.id, 'i', sizeof element.id);
    }
    locations->set(plugin, elements, random.below(4));
    locations->set(plugin, nullptr, random.below(2));
}
