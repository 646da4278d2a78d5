#include "audition/FactorySource.h"

#include "clap_host/NumberText.h"
#include "clap_host/QuotedText.h"
#include "presets/SectionTextReader.h"
#include "render/AutomationReader.h"
#include "render/RenderError.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <set>
#include <tuple>

namespace {

struct Kind {
    std::string_view extension;
    const char* section;  // on which presets of this kind are heard
};
constexpr std::string_view wholeExtension = ".mvp";
constexpr std::array kinds{Kind{wholeExtension, ""},      Kind{".delays", ""}, Kind{".filters", ""},
                           Kind{".xlfo", "XLFO 1"},       Kind{".eg", "EG 1"}, Kind{".ef", "EF 1"},
                           Kind{".midi", "MIDI Source 1"}};

const Kind* kindOf(const std::filesystem::path& file)
{
    const auto found = std::ranges::find(kinds, file.extension().string(), &Kind::extension);
    return found == kinds.end() ? nullptr : &*found;
}

constexpr std::string_view signature = "MStd";

/// The number in front of a folder's name, by which folders are shown in order: 2 of "_2 General".
int folderNumber(std::string_view folder)
{
    int number = 0;
    if (folder.starts_with('_'))
        std::from_chars(folder.data() + 1, folder.data() + folder.size(), number);
    return number;
}

/// One file on its way into a FactorySource.
class SourceReader {
public:
    SourceReader(FactorySource& readSource, std::istream& text) : source(readSource), reader(text) {}

    void read()
    {
        while (reader.nextSection()) {
            const std::string section = reader.section();
            if (section != "Preset" && section != "Parameters")
                fail("there is no section " + inQuotes(section));
            readSection(section == "Parameters");
        }
        if (reader.hasSyntaxError())
            fail("this is neither a section, nor \"key=value\", nor a comment");
        if (source.description.empty() && source.file.extension() == wholeExtension)
            fail("the preset has no description");
    }

private:
    void readSection(bool parameters)
    {
        while (reader.nextKey()) {
            if (!keys.insert(reader.key()).second)
                fail(inQuotes(reader.key()) + " stands here for the second time");
            if (parameters)
                source.settings.push_back({reader.key(), reader.value(), reader.lineNumber()});
            else
                readHeader(reader.key(), reader.value());
        }
    }

    void readHeader(const std::string& key, const std::string& value)
    {
        if (key == "Author")
            source.author = value;
        else if (key == "Description")
            source.description = value;
        else if (key == "Tags")
            readTags(value);
        else if (key == "Signature" && value != signature)
            fail("the signature must be " + inQuotes(signature));
        else if (key != "Signature" && key != "Version")
            fail("there is no header " + inQuotes(key));
    }

    void readTags(std::string_view list)
    {
        for (std::size_t end = 0; end != std::string_view::npos; list.remove_prefix(end + 1)) {
            end = list.find(',');
            source.tags.emplace_back(trimmed(list.substr(0, end)));
            if (end == std::string_view::npos)
                return;
        }
    }

    [[noreturn]] void fail(const std::string& reason) const
    {
        throw RenderError(linePrefix(source.file.string(), reader.lineNumber()) + reason);
    }

    FactorySource& source;
    SectionTextReader reader;
    std::set<std::string, std::less<>> keys;
};

}  // namespace

FactorySource readFactorySource(const std::filesystem::path& file, const std::string& folder)
{
    FactorySource source;
    source.file = file;
    source.name = file.stem().string();
    source.folder = folder;
    if (const Kind* kind = kindOf(file))
        source.section = kind->section;
    std::ifstream text(file);
    if (!text)
        throw RenderError("can't read " + inQuotes(file.string()));
    SourceReader(source, text).read();
    return source;
}

std::vector<FactorySource> readFactorySources(const std::filesystem::path& root)
{
    std::vector<FactorySource> sources;
    if (!std::filesystem::is_directory(root))
        throw RenderError(inQuotes(root.string()) + " is no folder");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        if (!entry.is_regular_file() || kindOf(entry.path()) == nullptr)
            continue;
        const std::string folder = entry.path().parent_path().lexically_relative(root).generic_string();
        sources.push_back(readFactorySource(entry.path(), folder == "." ? "" : folder));
    }
    if (sources.empty())
        throw RenderError("there are no presets in " + inQuotes(root.string()));
    std::ranges::sort(sources, {}, [](const FactorySource& source) {
        return std::tuple(folderNumber(source.folder), source.folder, source.name);
    });
    return sources;
}
