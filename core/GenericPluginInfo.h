#pragma once

#include <cstdint>
#include <string>

/// How a product names itself. Every plug-in and every processor carries one.
struct GenericPluginInfo {
    enum Category : std::int32_t {
        Other = 0,
        Instrument = 1,
        Filter = 2,
        Delay = 3,
        Compressor = 4,
        Equalizer = 5,
        Distortion = 6,
        Analyzer = 7,
        Reverb = 8,
    };
    enum Flags : std::uint32_t {
        OffersMono = 0x0002,
        OffersSurround = 0x0004,
        HasSideChain = 0x0008,
        WantsTrackInfo = 0x0020,
        FeedsInterfaceMidi = 0x0040,
        HasPresetCache = 0x0100,
        WritesTextPresets = 0x0200,
        IdIsProviderId = 0x1000,  // the plug-in goes by the id of its preset-discovery provider
    };

    std::int32_t category = Other;
    std::uint32_t flags = 0;
    std::int32_t customValuesSetting = 0;  // above 0: binary presets carry the custom values
    std::string code;                      // four characters
    std::string name;                      // without a version
    std::string versionedName;             // as hosts show it, and folders

    bool isEffect() const noexcept { return category != Instrument; }
    bool hasFlag(Flags flag) const noexcept { return (flags & flag) != 0; }
};
