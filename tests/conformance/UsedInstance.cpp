#include "UsedInstance.h"

#include <gtest/gtest.h>

namespace {

std::uint32_t someExtensions(std::uint32_t seed)
{
    // Half of the hosts offer everything.
    return seed % 2 == 0 ? HostExtensions::all : (seed * 2654435761u >> 8) & HostExtensions::all;
}

}  // namespace

UsedInstance::UsedInstance(const ClapModule& module, std::uint32_t seed, std::vector<std::string> presets)
    : random(seed),
      instance(module, someExtensions(seed)),
      user(instance, random, std::move(presets)),
      restBlock(random, instance.parameters().list())
{}

UsedInstance::~UsedInstance()
{
    if (audio.joinable())
        deactivate();
    EXPECT_EQ(instance.host().violations(), std::vector<std::string>());
}

void UsedInstance::act()
{
    if (random.oneIn(12))
        changeState();
    else if (!audio.joinable() && random.oneIn(3))
        flushAtRest();
    else
        user.act();
}

void UsedInstance::changeState()
{
    // A storm now and then: hosts that look for a setting that works.
    for (int i = random.oneIn(4) ? 6 : 1; i-- > 0;) {
        if (audio.joinable())
            deactivate();
        else
            activate();
    }
    const auto* configs = instance.extension<clap_plugin_audio_ports_config_t>(CLAP_EXT_AUDIO_PORTS_CONFIG);
    if (!audio.joinable()) {
        EXPECT_TRUE(configs->select(&instance.plugin(), 1));
        EXPECT_FALSE(configs->select(&instance.plugin(), random.oneIn(2) ? 0 : random.bits() | 2));
    }
}

void UsedInstance::activate()
{
    constexpr double rates[] = {44100.0, 48000.0, 96000.0, 192000.0, 8000.0, 22050.0, 44055.94, 384000.0};
    const std::uint32_t blocks[] = {1, 64, 512, 2048, HostileBlock::mostFrames};
    longest = random.oneIn(3) ? 1 + random.below(4096) : random.pick(blocks);
    instance.activate(random.pick(rates), 1 + random.below(longest), longest);
    ending = false;
    audio = std::thread([this, seed = random.bits()] { play(seed); });
}

void UsedInstance::deactivate()
{
    ending = true;
    audio.join();
    audio = {};
    instance.deactivate();
}

void UsedInstance::flushAtRest()
{
    const auto* params = instance.extension<clap_plugin_params_t>(CLAP_EXT_PARAMS);
    restBlock.arrange(HostileBlock::mostFrames);
    params->flush(&instance.plugin(), restBlock.inputEvents(), restBlock.outputEvents());
    EXPECT_STREQ(restBlock.eventFault(), nullptr);
}

void UsedInstance::play(std::uint32_t seed)
{
    Random numbers(seed);
    HostileBlock block(numbers, instance.parameters().list());
    const auto* params = instance.extension<clap_plugin_params_t>(CLAP_EXT_PARAMS);
    const clap_plugin_t* plugin = &instance.plugin();
    do {
        if (numbers.oneIn(2))
            instance.reset();
        if (numbers.oneIn(2)) {
            const ClapHost::AudioScope scope(instance.host());
            block.arrange(longest);
            params->flush(plugin, block.inputEvents(), block.outputEvents());
        }
        if (numbers.oneIn(10))
            continue;  // activated, and never processed
        instance.startProcessing();
        playBlocks(block, numbers);
        instance.stopProcessing();
    } while (!ending && !testing::Test::HasFailure());
}

void UsedInstance::playBlocks(HostileBlock& block, Random& numbers)
{
    const clap_plugin_t* plugin = &instance.plugin();
    const ClapHost::AudioScope scope(instance.host());
    for (std::uint32_t left = numbers.below(200); left-- > 0 && !ending;) {
        block.arrange(longest);
        EXPECT_EQ(plugin->process(plugin, block.record()), CLAP_PROCESS_CONTINUE);
        if (const char* fault = block.fault()) {
            ADD_FAILURE() << fault << ", of " << block.record()->frames_count << " frames";
            return;
        }
        if (numbers.oneIn(50))
            plugin->reset(plugin);
    }
}
