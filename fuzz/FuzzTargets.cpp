#include "FuzzTarget.h"

#include "core/ControllerMapping.h"
#include "dsp/DesignFilterStyle.h"
#include "foundation/BinaryDataReader.h"
#include "foundation/Resources.h"
#include "foundation/SettingsText.h"
#include "gui/Bitmap.h"
#include "gui/PNGFiler.h"
#include "presets/CollectionPresetLoader.h"
#include "presets/FactoryArchive.h"
#include "presets/FavoritesFile.h"
#include "presets/PresetCacheFile.h"
#include "presets/PresetMetadata.h"
#include "presets/PresetWriter.h"
#include "product/SordelinPlugin.h"
#include "product/SordelinPresetLoader.h"
#include "render/MidiFile.h"
#include "render/RenderError.h"
#include "support/ControllerMapFile.h"
#include "support/PngFile.h"

#include <cmath>
#include <filesystem>
#include <memory>
#include <set>
#include <sstream>

namespace {

std::string resourceBytes(const char* name)
{
    const auto bytes = findResource(name);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string word(std::int32_t value) { return {reinterpret_cast<const char*>(&value), sizeof value}; }

/// A plug-in that is never thrown away: bad input must not leave it in a bad state.
struct Patient {
    Patient()
    {
        for (int i = 0; i < plugin.parameterCount(); ++i) {
            AbstractPluginParameter& parameter = plugin.parameter(i);
            const float place = static_cast<float>(i * 37 % 101) / 100.0f;
            parameter.setValue(parameter.minimumValue() +
                                   place * (parameter.maximumValue() - parameter.minimumValue()),
                               announceChange);
        }
    }
    std::string check()
    {
        for (int i = 0; i < plugin.parameterCount(); ++i) {
            const AbstractPluginParameter& parameter = plugin.parameter(i);
            const float value = parameter.currentValue();
            if (!(value >= parameter.minimumValue() && value <= parameter.maximumValue()))
                return std::string(parameter.displayName()) + " is " + std::to_string(value);
        }
        return {};
    }
    SordelinPlugin plugin;
};

FuzzTarget stateTarget(const std::shared_ptr<Patient>& patient)
{
    std::ostringstream state;
    patient->plugin.setPresetName("Some preset");
    patient->plugin.setCustomValues({{"AUTHOR", "Somebody"}, {"TAGS", "a,b"}});
    patient->plugin.saveState(state);
    return {"state", {state.str()}, [patient](const std::string& bytes) {
                std::istringstream stream(bytes);
                patient->plugin.loadState(stream);
                return patient->check();
            }};
}

std::string binaryPreset(const char* signature, std::int32_t version, std::int32_t count)
{
    std::string bytes = signature + word(version) + word(count);
    for (std::int32_t i = 0; i < count; ++i) {
        const float value = static_cast<float>(i * 53 % 97) / 97.0f;
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    return bytes;
}

FuzzTarget presetTarget(const std::shared_ptr<Patient>& patient)
{
    const PresetWriter writer(patient->plugin.storedParameters, &patient->plugin);
    std::ostringstream binary;
    std::ostringstream text;
    writer.writePreset(binary, patient->plugin.presetFormatVersion());
    writer.writeText(text, patient->plugin.presetFormatVersion(), PresetWriter::TextOptions::WithName);
    return {"preset",
            {binary.str(), text.str(), binaryPreset("MDly", 1, 150), binaryPreset("MSlg", 2, 180),
             binaryPreset("MStd", 3, 704), binaryPreset("MStd", 4, 705)},
            [patient](const std::string& bytes) {
                for (const bool older : {false, true}) {
                    std::istringstream stream(bytes);
                    ErrorResult result;
                    const auto loader = older ? std::make_unique<SordelinPresetLoader>(patient->plugin)
                                              : std::make_unique<CustomPresetLoader>(
                                                    patient->plugin.storedParameters, patient->plugin);
                    if (!older)
                        loader->currentVersion = patient->plugin.presetFormatVersion();
                    if (loader->readPreset(result, stream) != result.succeeded())
                        return std::string("the outcome contradicts itself");
                    if (!result.succeeded() && result.message().empty())
                        return std::string("a failure without a message");
                }
                return patient->check();
            }};
}

FuzzTarget sectionTarget(const std::shared_ptr<Patient>& patient)
{
    return {"section preset",
            {binaryPreset("MStd", 1, 73), "[Preset]\nSignature=MStd\nVersion=1\n\n[Parameters]\n"
                                          " Frequency=0.5\n Step 1 Value=-1\nNum Active  Steps=4\n"},
            [patient](const std::string& bytes) {
                std::istringstream stream(bytes);
                ErrorResult result;
                CollectionPresetLoader loader(patient->plugin.componentPresets.section(2, 3));
                loader.readPreset(result, stream, 1);
                return patient->check();
            }};
}

FuzzTarget settingsTarget()
{
    return {"settings",
            {"# kept\nInterfaceWidth = 800\nPresetFolder = \"/home/x/\\u00e9\"\nBytes = [1, 2, 255]\n",
             "[table]\nx = 1.5\n[[list]]\ny = 1979-05-27T07:32:00Z\n"},
            [](const std::string& bytes) {
                const bool readable = parseSettings(bytes).has_value();
                const SettingValues change{{"InterfaceWidth", 640}};
                if (!readable)
                    return std::string();
                const auto changed = parseSettings(changeSettings(bytes, change));
                const auto found =
                    changed ? changed->find("InterfaceWidth") : SettingValues::const_iterator();
                return changed && found != changed->end() && found->second == change.begin()->second
                           ? std::string()
                           : std::string("a change doesn't come back");
            }};
}

FuzzTarget controllerMapTarget()
{
    return {"controller map",
            {controllerMapBytes({{1, 5}, {20, 0x100000}, {127, 700}})},
            [](const std::string& bytes) {
                ControllerMapping mapping;
                std::istringstream stream(bytes);
                BinaryDataReader reader(stream);
                mapping.read(reader);
                for (int i = 0; i < ControllerMapping::controllerCount; ++i) {
                    const std::int32_t target = mapping.targetOf(i);
                    if (target != ControllerMapping::none && mapping.controllerOf(target) != i)
                        return std::string("a target has two controllers");
                }
                return std::string();
            }};
}

FuzzTarget characteristicTarget()
{
    return {"characteristic",
            {resourceBytes("Tube.fil"), resourceBytes("Prime.fil")},
            [](const std::string& bytes) {
                DesignFilterStyle style;
                std::istringstream stream(bytes);
                BinaryDataReader reader(stream);
                style.read(reader);
                for (const float frequency : {-40.0f, 4.0f, 10.5f, 40.0f}) {
                    for (const float peak : {0.0f, 0.35f, 1.0f}) {
                        const auto found = style.characteristicAt(frequency, peak);
                        if (!std::isfinite(found.resonance) || !std::isfinite(found.cubic) ||
                            !(found.clipDrive >= 0.1f && std::isfinite(found.clipDrive)))
                            return std::string("numbers that no filter can stand");
                    }
                }
                const float clipped = style.clipTable().table().lookup(10.0f);
                return std::isfinite(clipped) ? std::string() : std::string("a clipper that gives no number");
            }};
}

/// A folder for what can only be read from a disk.
struct Disk {
    std::string put(const char* name, const std::string& bytes) const
    {
        folder.write(name, bytes);
        return folder / name;
    }
    const TemporaryFolder folder;
};

/// Two files in two folders, each file stored as it would be packed: empty.
std::string smallArchive()
{
    const auto entry = [](const std::string& name, std::uint32_t size, std::uint32_t unpacked) {
        std::string bytes(FactoryArchive::entrySize, '\0');
        bytes[0] = static_cast<char>(name.size());
        bytes.replace(1, name.size(), name);
        bytes.replace(FactoryArchive::sizeOffset, 4, word(static_cast<std::int32_t>(size)));
        bytes.replace(FactoryArchive::unpackedSizeOffset, 4, word(static_cast<std::int32_t>(unpacked)));
        return bytes;
    };
    const std::string end(1, '\0');
    const std::string inner = entry("b.mvp", 0, 0) + entry("c.mvp", 8, 0) + "12345678" + end;
    const std::string folder = entry("Inner", static_cast<std::uint32_t>(inner.size()), 0xFFFFFFFFu) + inner +
                               entry("a.mvp", 0, 0) + end;
    return std::string(FactoryArchive::magic) + std::string(FactoryArchive::headerSize - 8, '\0') +
           entry("FactoryPresets", static_cast<std::uint32_t>(folder.size()), 0xFFFFFFFFu) + folder + end;
}

FuzzTarget archiveTarget()
{
    return {"factory archive",
            {smallArchive(), smallArchive() + resourceBytes("WindowsSetupDocs")},
            [](const std::string& bytes) {
                // Whatever the names in it say, nothing lies outside the target afterwards.
                const TemporaryFolder around;
                const std::string target = around / "target/";
                FactoryArchive({reinterpret_cast<const std::byte*>(bytes.data()), bytes.size()})
                    .extract("FactoryPresets", target, FactoryArchive::Existing::Keep);
                for (const auto& entry : std::filesystem::directory_iterator(around / ""))
                    if (entry.path().filename() != "target")
                        return "it left " + entry.path().string();
                return std::string();
            }};
}

FuzzTarget metadataTarget()
{
    const auto disk = std::make_shared<Disk>();
    const std::string block =
        "CuSV" + word(1) + word(2) + word(6) + "AUTHOR" + word(2) + "Me" + word(4) + "TAGS" + word(3) + "a,b";
    return {"metadata",
            {binaryPreset("MStd", 5, 705) + block,
             "[Preset]\nSignature=MStd\nVersion=5\nAuthor=\"A \\\"b\\\"\"\nTags=x,y\n\n[Parameters]\nA=1\n"},
            [disk](const std::string& bytes) {
                PresetInfo entry(disk->put("a.mvp", bytes));
                if (!readPresetMetadata(entry.path, entry))
                    return std::string();
                entry.author = "Somebody";
                entry.tags = {"one", "two"};
                if (!writePresetMetadata(entry).succeeded())
                    return disk->folder.read("a.mvp") == bytes ? std::string()
                                                               : std::string("a failure changed the file");
                PresetInfo again(entry.path);
                readPresetMetadata(again.path, again);
                return again.author == entry.author && again.tags == entry.tags
                           ? std::string()
                           : std::string("what was written doesn't come back");
            }};
}

FuzzTarget listsTarget()
{
    const auto disk = std::make_shared<Disk>();
    PresetCacheFile cache;
    cache.roots = {"/presets/", "/others/"};
    cache.presets.emplace_back("/presets/a.mvp");
    cache.presets.emplace_back("/presets/b.mvp");
    cache.write(disk->folder / "seed");
    return {"lists of presets",
            {disk->folder.read("seed"), "# mine\nBass/a.mvp\n\n../b.mvp\n"},
            [disk](const std::string& bytes) {
                PresetCacheFile().read(disk->put("PresetCache.dat", bytes));
                disk->put("Favorites.txt", bytes);
                const FavoritesFile favorites(disk->folder / "");
                favorites.change({disk->folder / "new.mvp"}, {});
                for (const std::string& path : favorites.read())
                    if (path == std::string(disk->folder / "new.mvp"))
                        return std::string();
                return std::string("a favourite was lost");
            }};
}

FuzzTarget midiFileTarget()
{
    const std::string track(
        "\0\xff\x51\x03\x07\xa1\x20\0\x90\x3c\x40\x60\x3c\0\x81\0\xb0\x01\x7f\0\xff\x2f\0", 23);
    const auto big = [](std::uint32_t value) {
        std::string bytes;
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += static_cast<char>(value >> shift & 0xFF);
        return bytes;
    };
    const std::string file = "MThd" + big(6) + std::string("\0\1\0\2\0\x60", 6) + "MTrk" +
                             big(static_cast<std::uint32_t>(track.size())) + track + "MTrk" +
                             big(static_cast<std::uint32_t>(track.size())) + track;
    return {"MIDI file", {file}, [](const std::string& bytes) {
                try {
                    for (const MidiFileMessage& message : readMidi(bytes, "file"))
                        if (!(message.seconds >= 0.0) || message.status < 0x80 || message.data1 > 127)
                            return std::string("a message that there can't be");
                } catch (const RenderError&) {  // the stated result
                }
                return std::string();
            }};
}

FuzzTarget pngTarget()
{
    PngFile file;
    file.width = 12;
    file.height = 7;
    file.filters = {0, 1, 2, 3, 4};
    file.pieceSize = 50;
    for (std::uint32_t i = 0; i < file.width * file.height * 4; ++i)
        file.channels.push_back(static_cast<std::uint8_t>(i * i * 31 + i / 7));
    PngFile opaque = file;
    opaque.colourType = 2;
    opaque.gamma = 0;
    const auto backing = std::make_shared<gui::DeviceBacking>();
    return {"PNG file", {file.Bytes(), opaque.Bytes()}, [backing](const std::string& bytes) {
                const std::set<std::string> stated{"Invalid PNG signature", "Invalid PNG image",
                                                   "Unsupported PNG format"};
                gui::Bitmap bitmap(*backing);
                std::istringstream stream(bytes);
                try {
                    gui::PNGFiler(bitmap).Read(stream);
                } catch (const gui::EBitmap& error) {
                    return stated.count(error.what()) ? std::string() : std::string(error.what());
                }
                const gui::BasicPoint<int> size = bitmap.GetSize();
                return size.x > 0 && size.y > 0 ? std::string() : std::string("an empty picture");
            }};
}

}  // namespace

std::vector<FuzzTarget> fuzzTargets()
{
    const auto patient = std::make_shared<Patient>();
    return {stateTarget(patient),
            presetTarget(patient),
            sectionTarget(patient),
            settingsTarget(),
            controllerMapTarget(),
            characteristicTarget(),
            archiveTarget(),
            metadataTarget(),
            listsTarget(),
            midiFileTarget(),
            pngTarget()};
}
