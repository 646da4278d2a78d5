#include "pack_factory/PresetText.h"

#include "foundation/BinaryDataWriter.h"
#include "pack/PackError.h"
#include "pack/ShownText.h"
#include "pack_factory/ParameterTree.h"
#include "presets/CustomValues.h"
#include "presets/PresetLoader.h"
#include "presets/PresetWriter.h"
#include "presets/SectionTextReader.h"

#include <algorithm>
#include <optional>
#include <set>
#include <sstream>

namespace {

constexpr std::string_view wholeExtension = ".mvp";
constexpr int wholeVersion = 5;

/// What a file of some extension holds.
struct Kind {
    const PresetParameterCollection* collection;
    int version;
};

class Packer {
public:
    Packer(const std::string& sourceText, std::string_view name)
        : fileName(name),
          stream(sourceText),
          reader(stream),
          kind(kindOf(name)),
          prefix(kind.collection->commonPrefix())
    {}

    std::string pack()
    {
        if (!reader.nextSection() || reader.section() != PresetLoader::presetSection)
            fail("a preset begins with [Preset]");
        readHeader();
        while (reader.nextSection()) {
            if (reader.section() != PresetLoader::parameterSection)
                fail("unknown section [" + reader.section() + "]");
            readParameters();
        }
        if (reader.hasSyntaxError())
            fail("this is neither [section] nor key=value");
        return bytes();
    }

private:
    Kind kindOf(std::string_view name)
    {
        const std::string_view extension = name.substr(std::min(name.rfind('.'), name.size()));
        if (extension == wholeExtension)
            return {&tree.whole, wholeVersion};
        for (int group = 0; group < tree.sections.groupCount(); ++group) {
            if (extension == tree.sections.extension(group))
                return {&tree.sections.section(group, 0), ComponentPresets::formatVersion};
        }
        throw PackError(std::string(name) + ": no kind of preset has this extension");
    }

    [[noreturn]] void fail(const std::string& what)
    {
        throw PackError(fileName + ":" + std::to_string(reader.lineNumber()) + ": " + what);
    }

    void readHeader()
    {
        std::string signature;
        std::string version;
        while (reader.nextKey()) {
            if (reader.key() == "Signature")
                signature = reader.value();
            else if (reader.key() == "Version")
                version = reader.value();
            else
                readMetadata();
        }
        if (signature != kind.collection->signature)
            fail("the signature isn't " + kind.collection->signature);
        if (version != std::to_string(kind.version))
            fail("the version isn't " + std::to_string(kind.version));
    }

    void readMetadata()
    {
        for (const auto& names : PresetLoader::headerNames) {
            if (reader.key() != names.inText || reader.key() == "Name")
                continue;
            if (kind.collection != &tree.whole)
                fail("presets of a section hold no \"" + reader.key() + "\"");
            metadata[names.amongCustomValues] = reader.value();
            return;
        }
        fail("unknown key \"" + reader.key() + "\"");
    }

    void readParameters()
    {
        while (reader.nextKey()) {
            const int index = indexOf(reader.key());
            if (index < 0)
                fail("unknown parameter \"" + reader.key() + "\"");
            if (!named.insert(index).second)
                fail("\"" + reader.key() + "\" stands here twice");
            AbstractPluginParameter& parameter = kind.collection->at(index);
            parameter.setValue(valueFor(parameter, reader.value()), noEcho);
        }
    }

    /// The place in the collection of what a key means. The names of a section may also stand in full.
    int indexOf(const std::string& key) const
    {
        const int index = kind.collection->findKey(kind.collection->fullKey(key, prefix));
        return index >= 0 ? index : kind.collection->findKey(key);
    }

    float valueFor(const AbstractPluginParameter& parameter, const std::string& written)
    {
        const std::optional<float> value = parameter.parseText(written);
        if (!value)
            fail("\"" + parameter.displayName() + "\" can't be \"" + written + "\"");
        const std::string shown = parameter.valueText(*value);
        if (!showsWhatWasWritten(written, shown))
            fail("\"" + parameter.displayName() + "\" shows \"" + shown + "\" for \"" + written + "\"");
        return *value;
    }

    std::string bytes()
    {
        std::ostringstream file;
        PresetWriter(*kind.collection, nullptr).writePreset(file, kind.version);
        BinaryDataWriter writer(file);
        if (!metadata.empty())
            writeCustomValues(writer, metadata);
        return file.str();
    }

    ParameterTree tree;
    const std::string fileName;
    std::istringstream stream;
    SectionTextReader reader;
    const Kind kind;
    const std::string prefix;
    CustomValues metadata;
    std::set<int> named;
};

}  // namespace

std::string packPreset(const std::string& text, std::string_view fileName)
{
    return Packer(text, fileName).pack();
}
