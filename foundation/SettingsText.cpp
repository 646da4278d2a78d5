#include "foundation/SettingsText.h"

#define TOML_EXCEPTIONS 0
// A damaged file is no reason to end the host: what the library asserts of it, it also reports.
#define TOML_ASSERT(expression) static_assert(true)
#include <toml++/toml.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <limits>
#include <locale>
#include <sstream>
#include <string_view>

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// Reading.

std::optional<SettingValue> bytesOf(const toml::array& array)
{
    std::vector<std::uint8_t> bytes;
    for (const toml::node& element : array) {
        const toml::value<std::int64_t>* number = element.as_integer();
        if (!number || number->get() < 0 || number->get() > 255)
            return std::nullopt;
        bytes.push_back(static_cast<std::uint8_t>(number->get()));
    }
    return bytes;
}

std::optional<SettingValue> settingOf(const toml::node& node)
{
    using Limits = std::numeric_limits<std::int32_t>;
    if (const auto* number = node.as_integer())
        return static_cast<std::int32_t>(
            std::clamp<std::int64_t>(number->get(), Limits::min(), Limits::max()));
    if (const auto* text = node.as_string())
        return std::string(text->get().c_str());
    if (const toml::array* array = node.as_array())
        return bytesOf(*array);
    return std::nullopt;
}

/// Walks over a TOML text as far as its strings and comments go, to see whether anything but ASCII stands
/// elsewhere, or behind a backslash. There it can't be right, or nearly never, and the library asks such
/// characters whether they are blanks in a way that some of them don't survive.
class StrayLetters {
public:
    explicit StrayLetters(std::string_view checked) : text(checked)
    {
        if (text.substr(0, byteOrderMark.size()) == byteOrderMark)
            text.remove_prefix(byteOrderMark.size());
    }
    bool found()
    {
        while (at < text.size()) {
            if (isBeyondAscii(at))
                return true;
            if (text[at] == '#')
                at = std::min(text.find('\n', at), text.size());
            else if ((text[at] == '"' || text[at] == '\'') && !skipString())
                return true;
            else
                ++at;
        }
        return false;
    }

private:
    bool isBeyondAscii(std::size_t place) const
    {
        return place < text.size() && static_cast<unsigned char>(text[place]) >= 0x80;
    }
    /// Stops at its last quote. False for one with a stray letter or without an end.
    bool skipString()
    {
        const char quote = text[at];
        const std::string threefold(3, quote);
        const bool isLong = text.substr(at, 3) == threefold;
        const std::string_view end = isLong ? std::string_view(threefold) : std::string_view(&quote, 1);
        for (at += end.size(); at < text.size(); ++at) {
            if (text.substr(at, end.size()) == end) {
                at += end.size() - 1;
                return true;
            }
            if (text[at] == '\n' && !isLong)
                return false;
            if (text[at] != '\\' || quote != '"')
                continue;
            // A line may end in a backslash; what follows it goes on where its blanks end.
            const bool endsLine = text.find_first_not_of(" \t\r", at + 1) == text.find('\n', at + 1);
            const std::size_t next = endsLine ? text.find_first_not_of(" \t\r\n", at + 1) : at + 1;
            if (isBeyondAscii(next))
                return false;
            if (!endsLine)
                ++at;
        }
        return false;
    }

    std::string_view text;
    std::size_t at = 0;
};

/// None if the text isn't TOML.
std::optional<toml::table> tableOf(const std::string& text)
{
    if (StrayLetters(text).found())
        return std::nullopt;
    toml::parse_result parsed = toml::parse(text);
    return parsed ? std::optional(std::move(parsed).table()) : std::nullopt;
}

// Writing.

std::string quotedValue(std::string_view text)
{
    std::string result("\"");
    for (const char letter : text) {
        const auto code = static_cast<unsigned char>(letter);
        if (letter == '"' || letter == '\\') {
            result.append(1, '\\').append(1, letter);
        } else if (code < 0x20 || code == 0x7F) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04X", static_cast<unsigned>(code));
            result.append(escape.data());
        } else {
            result += letter;
        }
    }
    return result += '"';
}

std::string textOf(std::int32_t number) { return std::to_string(number); }

// What stands behind a 0 would never be read.
std::string textOf(const std::string& text) { return quotedValue(text.c_str()); }

std::string textOf(const std::vector<std::uint8_t>& bytes)
{
    std::string text("[");
    for (const std::uint8_t byte : bytes)
        text.append(text.size() > 1 ? ", " : "").append(std::to_string(byte));
    return text += ']';
}

std::string textOf(const SettingValue& value)
{
    return std::visit([](const auto& present) { return textOf(present); }, value);
}

std::string lineOf(const std::string& key, const SettingValue& value)
{
    return quotedValue(key).append(" = ").append(textOf(value)).append("\n");
}

/// As `lineOf`, with a name that needs no quotes left plain.
std::string plainLineOf(const std::string& key, const SettingValue& value)
{
    const auto isPlain = [](char letter) {
        return (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
               (letter >= '0' && letter <= '9') || letter == '_' || letter == '-';
    };
    const bool plain = !key.empty() && std::all_of(key.begin(), key.end(), isPlain);
    return plain ? std::string(key).append(" = ").append(textOf(value)).append("\n") : lineOf(key, value);
}

// Editing.

/// Where the lines of a text begin, to find places in it: the parser counts characters, not bytes.
class TextPlaces {
public:
    explicit TextPlaces(std::string_view wholeText)
        : text(wholeText), lines{wholeText.starts_with(byteOrderMark) ? byteOrderMark.size() : 0}
    {
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\n')
                lines.push_back(i + 1);
        }
    }
    std::size_t of(const toml::source_position& position) const
    {
        if (position.line < 1 || position.line > lines.size())
            return text.size();
        std::size_t place = lines[position.line - 1];
        for (toml::source_index column = 1; column < position.column && place < text.size(); ++column) {
            do
                ++place;
            while (place < text.size() && (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80);
        }
        return place;
    }
    std::size_t front() const { return lines.front(); }
    /// The begin of the next line, or the text's end.
    std::size_t behindLineOf(const toml::source_position& position) const
    {
        return position.line < lines.size() ? lines[position.line] : text.size();
    }

private:
    std::string_view text;
    std::vector<std::size_t> lines;
};

struct Edit {
    std::size_t begin;  // bytes from here on
    std::size_t end;    // up to here go
    std::string text;   // and this comes
};

bool hasOwnHeader(const toml::node& node)
{
    if (const toml::table* table = node.as_table())
        return !table->is_inline();
    return node.is_array_of_tables();
}

/// Behind the last value that stands before the tables; at the front if there is none.
std::size_t placeForMore(const toml::table& table, const TextPlaces& places)
{
    std::size_t place = places.front();
    for (const auto& [key, node] : table) {
        if (!hasOwnHeader(node))
            place = std::max(place, places.behindLineOf(node.source().end));
    }
    return place;
}

std::string edited(const std::string& text, const toml::table& table, const SettingValues& changes)
{
    const TextPlaces places(text);
    std::vector<Edit> edits;
    std::string more;
    for (const auto& [key, value] : changes) {
        const toml::node* present = table.get(key);
        if (!present)
            more += plainLineOf(key, value);
        else if (settingOf(*present) != value)
            edits.push_back(
                {places.of(present->source().begin), places.of(present->source().end), textOf(value)});
    }
    if (!more.empty()) {
        const std::size_t place = placeForMore(table, places);
        const bool lineIsOpen = place > places.front() && text[place - 1] != '\n';
        edits.push_back({place, place, (lineIsOpen ? "\n" : "") + more});
    }
    // From the back, so that the places before stay right.
    std::ranges::sort(edits, std::greater(), &Edit::begin);
    std::string result = text;
    for (const Edit& edit : edits)
        result.replace(edit.begin, edit.end - edit.begin, edit.text);
    return result;
}

/// Without the comments, for what can't be edited in place.
std::string rewritten(const toml::table& table, const SettingValues& changes)
{
    toml::table kept = table;
    std::string text;
    for (const auto& [key, value] : changes) {
        kept.erase(key);
        text += plainLineOf(key, value);
    }
    std::ostringstream rest;
    rest.imbue(std::locale::classic());
    rest << toml::toml_formatter(kept);
    return text.append(rest.str()).append("\n");
}

/// True if nothing but the changes sets the text apart from what there was.
bool isExact(const std::string& text, const toml::table& before, const SettingValues& changes)
{
    const auto values = parseSettings(text);
    const bool held = values && std::ranges::all_of(changes, [&](const auto& change) {
                          const auto found = values->find(change.first);
                          return found != values->end() && found->second == change.second;
                      });
    if (!held)
        return false;
    toml::table others = before;
    toml::table othersNow = *tableOf(text);
    for (const auto& [key, value] : changes) {
        others.erase(key);
        othersNow.erase(key);
    }
    return others == othersNow;
}

}  // namespace

std::optional<SettingValues> parseSettings(const std::string& text)
{
    const auto table = tableOf(text);
    if (!table)
        return std::nullopt;
    SettingValues values;
    for (const auto& [key, node] : *table) {
        if (auto value = settingOf(node))
            values.emplace(key.str(), std::move(*value));
    }
    return values;
}

std::string changeSettings(const std::string& text, const SettingValues& changes)
{
    const auto table = tableOf(text);
    if (!table)
        return text;
    SettingValues possible;
    for (const auto& [key, value] : changes) {
        // By way of its text, as which it will be read: without what follows a 0.
        if (const auto read = parseSettings(lineOf(key, value)))
            possible.insert(read->begin(), read->end());
    }
    const std::string result = edited(text, *table, possible);
    return isExact(result, *table, possible) ? result : rewritten(*table, possible);
}
