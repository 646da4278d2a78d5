#include "pack_factory/PresetText.h"

#include "foundation/BinaryDataWriter.h"
#include "pack/PackError.h"
#include "pack_factory/ParameterTree.h"
#include "presets/CustomValues.h"
#include "presets/PresetLoader.h"
#include "presets/PresetWriter.h"
#include "presets/SectionTextReader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
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
          text(sourceText),
          stream(sourceText),
          kind(kindOf(name)),
          prefix(kind.collection->commonPrefix())
    {}

    std::string pack()
    {
        SectionTextReader reader(stream);
        if (!reader.nextSection() || reader.section() != PresetLoader::presetSection)
            fail("a preset begins with [Preset]");
        readHeader(reader);
        while (reader.nextSection()) {
            if (reader.section() != PresetLoader::parameterSection)
                fail("unknown section [" + reader.section() + "]");
            readParameters(reader);
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
        const auto read = static_cast<std::size_t>(std::max<std::streamoff>(
            stream.rdbuf()->pubseekoff(0, std::ios_base::cur, std::ios_base::in), 0));
        const auto lines = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(read), '\n');
        const bool isWithinLine = read > 0 && text[read - 1] != '\n';
        throw PackError(fileName + ":" + std::to_string(lines + (isWithinLine ? 1 : 0)) + ": " + what);
    }

    void readHeader(SectionTextReader& reader)
    {
        std::string signature;
        std::string version;
        while (reader.nextKey()) {
            if (reader.key() == "Signature")
                signature = reader.value();
            else if (reader.key() == "Version")
                version = reader.value();
            else
                readMetadata(reader);
        }
        if (signature != kind.collection->signature)
            fail("the signature isn't " + kind.collection->signature);
        if (version != std::to_string(kind.version))
            fail("the version isn't " + std::to_string(kind.version));
    }

    void readMetadata(SectionTextReader& reader)
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

    void readParameters(SectionTextReader& reader)
    {
        while (reader.nextKey()) {
            const int index = kind.collection->findKey(kind.collection->fullKey(reader.key(), prefix));
            if (index < 0)
                fail("unknown parameter \"" + reader.key() + "\"");
            if (!named.insert(index).second)
                fail("\"" + reader.key() + "\" stands here twice");
            AbstractPluginParameter& parameter = kind.collection->at(index);
            parameter.setValue(valueFor(parameter, reader.value()), noEcho);
        }
    }

    float valueFor(const AbstractPluginParameter& parameter, const std::string& written)
    {
        float value = 0.0f;
        const char* end = written.data() + written.size();
        const auto result = std::from_chars(written.data(), end, value);
        if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value))
            fail("\"" + written + "\" isn't a number");
        if (value < parameter.minimumValue() || value > parameter.maximumValue())
            fail(written + " is out of the range of \"" + parameter.displayName() + "\"");
        if (parameter.stepped && value != std::floor(value))
            fail("\"" + parameter.displayName() + "\" takes whole numbers");
        return value;
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
    const std::string& text;
    std::istringstream stream;
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
