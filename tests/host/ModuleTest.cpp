#include "clap_host/ClapHostError.h"
#include "clap_host/ClapInstance.h"
#include "clap_host/ClapModule.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <chrono>
#include <cstring>
#include <string>
#include <vector>

TEST(Module, DescribesItsOnePlugin)
{
    const ClapModule module(SORDELIN_MODULE);
    EXPECT_EQ(module.pluginFactory().get_plugin_count(&module.pluginFactory()), 1u);
    EXPECT_EQ(module.pluginFactory().get_plugin_descriptor(&module.pluginFactory(), 1), nullptr);
    const clap_plugin_descriptor_t& descriptor = module.descriptor();
    EXPECT_STREQ(descriptor.id, "com.Morvelane.preset-discovery.Sordelin.2");
    EXPECT_STREQ(descriptor.name, "Sordelin 2");
    EXPECT_STREQ(descriptor.vendor, "Morvelane");
    EXPECT_STREQ(descriptor.version, "2.41");
    EXPECT_EQ(descriptor.description, nullptr);
    EXPECT_EQ(std::string(descriptor.manual_url), std::string(descriptor.url) + "/help/sordelin 2");
    EXPECT_EQ(std::string(descriptor.support_url), std::string(descriptor.url) + "/support/");
    EXPECT_STREQ(descriptor.features[0], "audio-effect");
    EXPECT_STREQ(descriptor.features[1], "delay");
    EXPECT_EQ(descriptor.features[2], nullptr);
    for (const clap_version_t& version : {module.entry().clap_version, descriptor.clap_version})
        EXPECT_TRUE(version.major == 1 && version.minor == 2 && version.revision == 5);
}

TEST(Module, KnowsItsFactoryByItsExactIdOnly)
{
    const ClapModule module(SORDELIN_MODULE);
    EXPECT_EQ(module.findFactory("clap.plugin-factory"), &module.pluginFactory());
    for (const char* id : {"clap.plugin-factory/1", "clap.plugin-factor", ""})
        EXPECT_EQ(module.findFactory(id), nullptr) << id;
}

TEST(Module, CountsInitsAndRefusesAPathThatIsNotLoaded)
{
    auto first = std::make_unique<ClapModule>(SORDELIN_MODULE);
    const ClapModule second(SORDELIN_MODULE);
    first.reset();
    EXPECT_STREQ(second.descriptor().name, "Sordelin 2");  // the second init still holds

    void* library = dlopen(SORDELIN_MODULE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr);
    const auto& entry = *static_cast<const clap_plugin_entry_t*>(dlsym(library, "clap_entry"));
    entry.deinit();  // the last one
    const auto* factory =
        static_cast<const clap_plugin_factory_t*>(entry.get_factory(CLAP_PLUGIN_FACTORY_ID));
    EXPECT_EQ(factory->get_plugin_descriptor(factory, 0), nullptr);
    EXPECT_FALSE(entry.init("/nowhere/Other.clap"));
    EXPECT_TRUE(entry.init(SORDELIN_MODULE));
    EXPECT_STREQ(factory->get_plugin_descriptor(factory, 0)->name, "Sordelin 2");
    dlclose(library);
}

TEST(Module, CreatesNothingForAnotherIdOrAnOldHost)
{
    const ClapModule module(SORDELIN_MODULE);
    ClapHost host;
    clap_host_t old = *host.record();
    old.clap_version = {0, 26, 0};
    const clap_plugin_factory_t& factory = module.pluginFactory();
    const char* id = module.descriptor().id;
    EXPECT_EQ(factory.create_plugin(&factory, host.record(), "com.Morvelane.Sordelin.2"), nullptr);
    EXPECT_EQ(factory.create_plugin(&factory, &old, id), nullptr);
    const clap_plugin_t* plugin = factory.create_plugin(&factory, host.record(), id);
    ASSERT_NE(plugin, nullptr);
    EXPECT_EQ(plugin->desc, &module.descriptor());
    plugin->destroy(plugin);  // never initialised
}

TEST(Module, IsGoneAfterTheLastUnloadEveryTime)
{
    for (int round = 0; round < 20; ++round) {
        {
            const ClapModule module(SORDELIN_MODULE);
            ClapInstance instance(module);
            instance.activate(48000.0, 1, 512);
        }
        EXPECT_EQ(dlopen(SORDELIN_MODULE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "still loaded";
    }
}

TEST(Module, ExportsItsEntryAndNothingElse)
{
    void* library = dlopen(SORDELIN_MODULE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr);
    EXPECT_NE(dlsym(library, "clap_entry"), nullptr);
    for (const char* name : {"_ZN4wave11Environment3runEib", "_ZTI9DelayLine", "_ZTV9DelayLine"})
        EXPECT_EQ(dlsym(library, name), nullptr) << name;
    dlclose(library);
}

TEST(Module, GivesItsExtensionsByExactIds)
{
    const ClapModule module(SORDELIN_MODULE);
    ClapInstance instance(module);
    for (const char* id :
         {"clap.note-ports", "clap.audio-ports", "clap.audio-ports-config", "clap.params", "clap.latency",
          "clap.tail", "clap.audio-ports-config-info/1", "clap.audio-ports-config-info/draft-0",
          "clap.project-location/2", "clap.state", "clap.preset-load/2"})
        EXPECT_NE(instance.extension<void>(id), nullptr) << id;
    EXPECT_EQ(instance.extension<void>("clap.track-info/1"),
              instance.extension<void>("clap.track-info.draft/1"));
    for (const char* id : {"clap.params/1", "clap.gain-adjustment-metering/0", ""})
        EXPECT_EQ(instance.extension<void>(id), nullptr) << id;
    EXPECT_EQ(instance.latency(), 0u);
    EXPECT_EQ(instance.tail(), 2147483647u);
}

TEST(Module, HasAStereoInputASideChainAndANotePort)
{
    const ClapModule module(SORDELIN_MODULE);
    ClapInstance instance(module);
    const auto inputs = instance.inputPorts();
    const auto outputs = instance.outputPorts();
    ASSERT_EQ(inputs.size(), 2u);
    ASSERT_EQ(outputs.size(), 1u);
    struct Row {
        clap_audio_port_info_t port;
        const char* name;
        std::uint32_t flags;
        clap_id id;
    };
    for (const auto& [port, name, flags, id] :
         {Row{inputs[0], "Main In", CLAP_AUDIO_PORT_IS_MAIN, 0}, Row{inputs[1], "Sidechain In", 0, 1},
          Row{outputs[0], "Main Out", CLAP_AUDIO_PORT_IS_MAIN, 0}}) {
        EXPECT_STREQ(port.name, name);
        EXPECT_EQ(port.flags, flags);
        EXPECT_EQ(port.id, id);
        EXPECT_EQ(port.channel_count, 2u);
        EXPECT_STREQ(port.port_type, "stereo");
        EXPECT_EQ(port.in_place_pair, CLAP_INVALID_ID);
    }

    const auto* notes = instance.extension<clap_plugin_note_ports_t>(CLAP_EXT_NOTE_PORTS);
    clap_note_port_info_t note{};
    EXPECT_EQ(notes->count(&instance.plugin(), true), 1u);
    EXPECT_EQ(notes->count(&instance.plugin(), false), 0u);
    ASSERT_TRUE(notes->get(&instance.plugin(), 0, true, &note));
    EXPECT_EQ(note.supported_dialects, 3u);
    EXPECT_EQ(note.preferred_dialect, 2u);
    EXPECT_FALSE(notes->get(&instance.plugin(), 1, true, &note));

    const auto* configs = instance.extension<clap_plugin_audio_ports_config_t>(CLAP_EXT_AUDIO_PORTS_CONFIG);
    clap_audio_ports_config_t config{};
    EXPECT_EQ(configs->count(&instance.plugin()), 1u);
    ASSERT_TRUE(configs->get(&instance.plugin(), 0, &config));
    EXPECT_EQ(config.id, 1u);
    EXPECT_STREQ(config.name, "Stereo");
    EXPECT_EQ(config.input_port_count, 2u);
    EXPECT_EQ(config.main_output_channel_count, 2u);
    EXPECT_FALSE(configs->get(&instance.plugin(), 1, &config));
    EXPECT_TRUE(configs->select(&instance.plugin(), 1));
    EXPECT_FALSE(configs->select(&instance.plugin(), 0));
    EXPECT_FALSE(configs->select(&instance.plugin(), 2));

    const auto* info =
        instance.extension<clap_plugin_audio_ports_config_info_t>(CLAP_EXT_AUDIO_PORTS_CONFIG_INFO);
    EXPECT_EQ(info->current_config(&instance.plugin()), 1u);
    clap_audio_port_info_t port{};
    ASSERT_TRUE(info->get(&instance.plugin(), 1, 1, true, &port));
    EXPECT_STREQ(port.name, "Sidechain In");
    EXPECT_EQ(port.channel_count, 2u);
    EXPECT_FALSE(info->get(&instance.plugin(), 1, 2, true, &port));
    EXPECT_FALSE(info->get(&instance.plugin(), 1, 1, false, &port));
    EXPECT_FALSE(info->get(&instance.plugin(), 0, 0, true, &port));
}
