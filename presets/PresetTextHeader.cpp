#include "presets/PresetTextHeader.h"

#include "presets/PresetMetadata.h"
#include "presets/SectionTextWriter.h"

#include <array>
#include <sstream>
#include <vector>

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// A key that the entry decides about.
struct HeaderKey {
    std::string_view key;
    std::string value;
    bool isAddedWhereMissing;
    bool isWritten = false;
};

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

bool saysNothing(std::string_view line) { return trimmed(line).empty() || trimmed(line).starts_with(';'); }

/// The key of a line, empty where there is none.
std::string_view keyOf(std::string_view line)
{
    if (saysNothing(line) || line.find('=') == std::string_view::npos)
        return {};
    return trimmed(line.substr(0, line.find('=')));
}

/// The lines with their ends.
std::vector<std::string_view> linesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        lines.push_back(
            text.substr(0, text.find('\n') == std::string_view::npos ? text.size() : text.find('\n') + 1));
        text.remove_prefix(lines.back().size());
    }
    return lines;
}

class HeaderRewriter {
public:
    explicit HeaderRewriter(const PresetInfo& entry)
        : keys{{{"Name", entry.name, false},
                {"Author", entry.author, true},
                {"Description", entry.description, true},
                {"Tags", joinTags(entry.tags), true}}}
    {}

    std::string rewrite(std::string_view text)
    {
        if (text.starts_with(byteOrderMark))
            take(byteOrderMark.size(), text);
        const std::vector<std::string_view> lines = linesOf(text);
        std::size_t place = 0;
        while (place < lines.size() && saysNothing(lines[place]))
            out += lines[place++];
        if (place == lines.size() || trimmed(lines[place]) != "[Preset]")
            return {};
        lineEnd = lines[place].ends_with("\r\n") ? "\r\n" : "\n";
        append(lines[place++]);
        for (const std::size_t end = endOfHeader(lines, place); place < end; ++place)
            rewriteLine(lines[place]);
        for (HeaderKey& key : keys) {
            if (key.isAddedWhereMissing)
                write(key);
        }
        for (; place < lines.size(); ++place)
            out += lines[place];
        return out;
    }

private:
    void take(std::size_t length, std::string_view& text)
    {
        out += text.substr(0, length);
        text.remove_prefix(length);
    }

    /// Behind the last key of the header, in front of the empty lines that part it from the next section.
    static std::size_t endOfHeader(const std::vector<std::string_view>& lines, std::size_t place)
    {
        std::size_t end = place;
        for (; place < lines.size() && !trimmed(lines[place]).starts_with('['); ++place) {
            if (!saysNothing(lines[place]))
                end = place + 1;
        }
        return end;
    }

    void append(std::string_view line)
    {
        out += line;
        if (!line.ends_with('\n'))
            out += lineEnd;  // it was the last one
    }

    void rewriteLine(std::string_view line)
    {
        for (HeaderKey& key : keys) {
            if (keyOf(line) == key.key)
                return write(key);
        }
        append(line);
    }

    void write(HeaderKey& key)
    {
        if (key.isWritten || key.value.empty())
            return;
        std::ostringstream line;
        SectionTextWriter(line).writeKey(key.key, key.value);
        out.append(trimmed(line.view())).append(lineEnd);
        key.isWritten = true;
    }

    std::array<HeaderKey, 4> keys;
    std::string_view lineEnd = "\n";
    std::string out;
};

}  // namespace

std::string rewritePresetTextHeader(std::string_view text, const PresetInfo& entry)
{
    return HeaderRewriter(entry).rewrite(text);
}
