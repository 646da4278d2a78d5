// The module in the hands of hosts that do everything the format allows, and much that it doesn't.
#include "UsedInstance.h"
#include "clap_host/InstanceState.h"
#include "clap_host/PresetIndexer.h"
#include "stress/RunLength.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <set>

namespace {

/// A host's call, and in which states the format allows it.
struct Call {
    const char* name;
    bool atRest, active, processing;
    void (*make)(ClapInstance& instance, Random& random);
};

void processOne(ClapInstance& instance, Random& random)
{
    static std::array<float, 64> left, right;
    std::array<float*, 2> channels{left.data(), right.data()};
    std::array<clap_audio_buffer_t, 1> ports{clap_audio_buffer_t{channels.data(), nullptr, 2, 0, 0}};
    left.fill(static_cast<float>(random.unit()));
    right.fill(0.25f);
    ClapBlock block;
    block.inputs = ports;
    block.outputs = ports;
    block.frames = 64;
    instance.process(block);
    for (const float sample : left)
        ASSERT_TRUE(std::isfinite(sample));
}

void flushOne(ClapInstance& instance, Random& random)
{
    EventList events;
    const ClapParameter& parameter = random.pick(instance.parameters().list());
    events.add(parameterEvent(0, parameter.id, parameter.maximum));
    instance.flush(events);
    EXPECT_EQ(instance.parameters().value(parameter.id), parameter.maximum) << parameter.name;
}

void saveAndLoad(ClapInstance& instance, Random& random)
{
    const auto state = saveState(instance, 1 + random.below(100));
    ASSERT_TRUE(state);
    EXPECT_TRUE(loadState(instance, *state, 1 + random.below(100)));
    EXPECT_EQ(saveState(instance), state);
}

constexpr Call everyCall[] = {
    {"activate", true, false, false,
     [](ClapInstance& i, Random& r) { i.activate(r.oneIn(2) ? 44100.0 : 48000.0, 1, 64); }},
    {"deactivate", false, true, false, [](ClapInstance& i, Random&) { i.deactivate(); }},
    {"start_processing", false, true, false, [](ClapInstance& i, Random&) { i.startProcessing(); }},
    {"stop_processing", false, false, true, [](ClapInstance& i, Random&) { i.stopProcessing(); }},
    {"process", false, false, true, processOne},
    {"reset", false, true, true, [](ClapInstance& i, Random&) { i.reset(); }},
    {"flush", true, true, true, flushOne},
    {"save and load", true, true, true, saveAndLoad},
    {"queries", true, true, true,
     [](ClapInstance& i, Random&) {
         EXPECT_EQ(i.latency(), 0u);
         EXPECT_GE(i.tail(), 0x7FFFFFFFu);
         EXPECT_EQ(i.inputPorts().size(), 2u);
     }},
    {"main loop", true, true, true, [](ClapInstance& i, Random&) { i.runMainThread(); }},
};

/// What the plug-in answers for each extension that it has.
std::vector<const void*> knownTables(const clap_plugin_t& plugin)
{
    std::vector<const void*> tables;
    for (const char* id :
         {CLAP_EXT_AUDIO_PORTS, CLAP_EXT_AUDIO_PORTS_CONFIG, CLAP_EXT_AUDIO_PORTS_CONFIG_INFO,
          CLAP_EXT_NOTE_PORTS, CLAP_EXT_PARAMS, CLAP_EXT_LATENCY, CLAP_EXT_TAIL, CLAP_EXT_STATE,
          CLAP_EXT_PRESET_LOAD, CLAP_EXT_TRACK_INFO, CLAP_EXT_PROJECT_LOCATION, CLAP_EXT_TIMER_SUPPORT,
          CLAP_EXT_POSIX_FD_SUPPORT})
        tables.push_back(plugin.get_extension(&plugin, id));
    return tables;
}

bool isAllowed(const Call& call, ClapInstance::State state)
{
    return state == ClapInstance::State::Inactive ? call.atRest
           : state == ClapInstance::State::Active ? call.active
                                                  : call.processing;
}

}  // namespace

TEST(Conformance, AllowsEveryOrderOfThreeCalls)
{
    const ClapModule module(SORDELIN_MODULE);
    Random random(seedToRun());
    ClapInstance instance(module);
    std::set<std::string> orders;
    std::array<const Call*, 3> last{};
    for (int step = 0; step < 6000; ++step) {
        const Call& call = random.pick(everyCall);
        if (!isAllowed(call, instance.state()))
            continue;
        call.make(instance, random);
        last = {last[1], last[2], &call};
        if (last[0])
            orders.insert(
                std::string(last[0]->name).append("|").append(last[1]->name).append("|").append(call.name));
        if (HasFailure()) {
            ADD_FAILURE() << "after " << step << " calls, the last one " << call.name;
            return;
        }
    }
    // Nearly all of the orders that there are have come up.
    EXPECT_GT(orders.size(), 330u);
    EXPECT_EQ(instance.host().violations(), std::vector<std::string>());
}

TEST(Conformance, EndsInAnyState)
{
    const ClapModule module(SORDELIN_MODULE);
    for (int stage = 0; stage < 5; ++stage) {
        ClapHost host;
        const clap_plugin_factory_t& factory = module.pluginFactory();
        const clap_plugin_t* plugin = factory.create_plugin(&factory, host.record(), module.descriptor().id);
        ASSERT_NE(plugin, nullptr);
        host.enter(stage > 0 ? ClapHost::Stage::Ready : ClapHost::Stage::Creating);
        // Extensions are asked for by hosts that don't wait for `init`; the answer is the same.
        const auto tables = knownTables(*plugin);
        EXPECT_EQ(std::ranges::count(tables, nullptr), 0);
        if (stage > 0) {
            EXPECT_TRUE(plugin->init(plugin));
        }
        EXPECT_EQ(knownTables(*plugin), tables);
        if (stage > 1) {
            EXPECT_TRUE(plugin->activate(plugin, 48000.0, 1, 512));
        }
        if (stage > 2) {
            EXPECT_TRUE(plugin->start_processing(plugin));
        }
        if (stage == 4)
            plugin->reset(plugin);
        plugin->destroy(plugin);
        EXPECT_EQ(host.violations(), std::vector<std::string>());
        EXPECT_TRUE(host.timers().empty() && host.descriptors().empty());
    }
}

TEST(Conformance, RefusesRatesThatNoInterfaceHas)
{
    using Limits = std::numeric_limits<double>;
    const ClapModule module(SORDELIN_MODULE);
    ClapInstance instance(module);
    const clap_plugin_t* plugin = &instance.plugin();
    for (const double rate : {0.0, -48000.0, 0.5, Limits::quiet_NaN(), Limits::infinity(),
                              -Limits::infinity(), 1e9, 1e30, Limits::max(), Limits::denorm_min()})
        EXPECT_FALSE(plugin->activate(plugin, rate, 1, 64)) << rate;
    // And is none the worse for it.
    instance.activate(48000.0, 1, 64);
    instance.startProcessing();
    Random random(1);
    processOne(instance, random);
}

/// Instances play on threads of their own; others come and go meanwhile.
TEST(Conformance, StandsRandomUseOfManyInstances)
{
    const std::uint32_t seed = seedToRun();
    SCOPED_TRACE(testing::Message() << "SORDELIN_SEED=" << seed);
    Random random(seed);
    const ClapModule module(SORDELIN_MODULE);
    std::vector<std::unique_ptr<UsedInstance>> instances;
    instances.push_back(std::make_unique<UsedInstance>(module, random.bits(), std::vector<std::string>()));
    const std::vector<std::string> presets = MainThreadUser::presetsOfHome();
    ASSERT_FALSE(presets.empty());
    for (const RunClock clock(secondsToRun(4.0)); clock.isRunning() && !HasFailure();) {
        if (random.oneIn(60) && instances.size() < 5)
            instances.push_back(std::make_unique<UsedInstance>(module, random.bits(), presets));
        else if (random.oneIn(60) && instances.size() > 1)
            instances.erase(instances.begin() + random.below(static_cast<std::uint32_t>(instances.size())));
        else
            random.pick(instances)->act();
        if (random.oneIn(200)) {
            const ClapModule again(SORDELIN_MODULE);  // a host that scans meanwhile
            PresetIndexer indexer(again);
            EXPECT_TRUE(indexer.init());
        }
    }
}
