#include "presets/SectionTextWriter.h"

#include <charconv>
#include <string>

namespace {

constexpr std::string_view keyBlanks = " \t";

bool beginsOrEndsIn(std::string_view text, std::string_view characters)
{
    return !text.empty() && (characters.find(text.front()) != std::string_view::npos ||
                             characters.find(text.back()) != std::string_view::npos);
}

bool canBeSection(std::string_view name) { return name.find_first_of("]\r\n") == std::string_view::npos; }

bool canBeKey(std::string_view key)
{
    return !key.empty() && key.find_first_of("=\r\n") == std::string_view::npos && key.front() != '[' &&
           key.front() != ';' && !beginsOrEndsIn(key, keyBlanks);
}

bool needsQuotes(std::string_view value)
{
    return beginsOrEndsIn(value, keyBlanks) || value.find_first_of("\n\r\"\\") != std::string_view::npos;
}

std::string quoted(std::string_view value)
{
    std::string text(1, '"');
    for (const char c : value) {
        if (c == '\n')
            text.append("\\n");
        else if (c == '\r')
            text.append("\\r");
        else if (c == '"' || c == '\\')
            text.append(1, '\\').append(1, c);
        else
            text.append(1, c);
    }
    return text.append(1, '"');
}

}  // namespace

void SectionTextWriter::writeSection(std::string_view name)
{
    if (!canBeSection(name))
        stream.setstate(std::ios_base::failbit);
    if (!isFirst)
        stream << '\n';
    isFirst = false;
    stream << '[' << name << "]\n";
}

void SectionTextWriter::writeKey(std::string_view key, std::string_view value)
{
    if (!canBeKey(key))
        stream.setstate(std::ios_base::failbit);
    stream << key << '=';
    if (needsQuotes(value))
        stream << quoted(value);
    else
        stream << value;
    stream << '\n';
}

void SectionTextWriter::writeKey(std::string_view key, int value)
{
    // A stream would group the digits of a number by its locale.
    char digits[12];
    const auto end = std::to_chars(digits, digits + sizeof(digits), value).ptr;
    writeKey(key, std::string_view(digits, static_cast<std::size_t>(end - digits)));
}
