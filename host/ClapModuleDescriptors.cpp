#include "host/ClapModuleDescriptors.h"

#include "core/VersionInfo.h"
#include "product/SordelinInfo.h"

#include <array>
#include <string_view>

namespace {

constexpr const char* vendor = "Morvelane";
constexpr const char* website = "https://www.morvelane.example";

std::string lowerCase(std::string text)
{
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

/// What an effect of a category is called in CLAP, or null.
const char* categoryFeature(int category)
{
    switch (category) {
    case GenericPluginInfo::Filter:
        return CLAP_PLUGIN_FEATURE_FILTER;
    case GenericPluginInfo::Delay:
        return CLAP_PLUGIN_FEATURE_DELAY;
    case GenericPluginInfo::Compressor:
        return CLAP_PLUGIN_FEATURE_COMPRESSOR;
    case GenericPluginInfo::Equalizer:
        return CLAP_PLUGIN_FEATURE_EQUALIZER;
    case GenericPluginInfo::Distortion:
        return CLAP_PLUGIN_FEATURE_DISTORTION;
    case GenericPluginInfo::Analyzer:
        return CLAP_PLUGIN_FEATURE_ANALYZER;
    case GenericPluginInfo::Reverb:
        return CLAP_PLUGIN_FEATURE_REVERB;
    default:
        return nullptr;
    }
}

std::vector<const char*> featuresOf(const GenericPluginInfo& info)
{
    std::vector<const char*> features{info.isEffect() ? CLAP_PLUGIN_FEATURE_AUDIO_EFFECT
                                                      : CLAP_PLUGIN_FEATURE_INSTRUMENT};
    if (const char* second = categoryFeature(info.category))
        features.push_back(second);
    features.push_back(nullptr);
    return features;
}

}  // namespace

ClapModuleDescriptors::ClapModuleDescriptors()
{
    const GenericPluginInfo info = sordelinInfo();
    const VersionInfo version = sordelinVersion();
    const std::string majorText = std::to_string(version.major);
    const std::string owner = std::string("com.") + vendor + ".";

    pluginName = info.versionedName;
    versionText = version.toText();
    // Stored projects find the plug-in by this id: it never changes.
    providerId = owner + "preset-discovery." + info.name + "." + majorText;
    pluginId =
        info.hasFlag(GenericPluginInfo::IdIsProviderId) ? providerId : owner + info.name + "." + majorText;
    providerName = pluginName + " Preset Indexer";
    manualUrl = std::string(website) + "/help/" + lowerCase(pluginName);
    supportUrl = std::string(website) + "/support/";
    features = featuresOf(info);

    // The version of the format that is spoken here, whatever headers it was built with.
    descriptor.clap_version = {1, 2, 5};
    descriptor.id = pluginId.c_str();
    descriptor.name = pluginName.c_str();
    descriptor.vendor = vendor;
    descriptor.url = website;
    descriptor.manual_url = manualUrl.c_str();
    descriptor.support_url = supportUrl.c_str();
    descriptor.version = versionText.c_str();
    descriptor.description = nullptr;
    descriptor.features = features.data();

    providerDescriptor.clap_version = descriptor.clap_version;
    providerDescriptor.id = providerId.c_str();
    providerDescriptor.name = providerName.c_str();
    providerDescriptor.vendor = vendor;
}
