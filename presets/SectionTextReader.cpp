#include "presets/SectionTextReader.h"

namespace {

constexpr std::string_view lineBlanks = " \t\r";  // a "\r" is left of the line end of another system
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(lineBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(lineBlanks) + 1 - first);
}

/// What an escape stands for, 0 if it is none.
char unescaped(char c)
{
    switch (c) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case '"':
    case '\\':
        return c;
    default:
        return 0;
    }
}

}  // namespace

SectionTextReader::SectionTextReader(std::istream& source) : stream(source)
{
    // Some editors put a mark at the front.
    const auto begin = stream.tellg();
    std::string front(byteOrderMark.size(), '\0');
    if (stream.read(front.data(), static_cast<std::streamsize>(front.size())) && front == byteOrderMark)
        return;
    stream.clear();
    stream.seekg(begin);
}

bool SectionTextReader::nextSection()
{
    while (nextKey()) {
    }
    if (state == State::BeforeFirst && nextLine())
        readHeader();
    if (state != State::AtHeader)
        return false;
    sectionName.swap(headerAhead);
    state = State::InSection;
    return true;
}

bool SectionTextReader::nextKey()
{
    if (state != State::InSection || !nextLine())
        return false;
    if (content.front() == '[')
        readHeader();
    else
        readKey();
    return state == State::InSection;
}

/// Goes on to the next line that says something.
bool SectionTextReader::nextLine()
{
    while (std::getline(stream, line)) {
        ++linesRead;
        content = trimmed(line);
        if (!content.empty() && content.front() != ';')
            return true;
    }
    state = State::End;
    return false;
}

void SectionTextReader::readHeader()
{
    if (content.front() != '[' || content.find(']') != content.size() - 1) {
        state = State::Error;
        return;
    }
    headerAhead = content.substr(1, content.size() - 2);
    state = State::AtHeader;
}

void SectionTextReader::readKey()
{
    const auto equals = content.find('=');
    if (equals == std::string_view::npos || equals == 0) {
        state = State::Error;
        return;
    }
    keyName = trimmed(content.substr(0, equals));
    const std::string_view text = trimmed(content.substr(equals + 1));
    if (!text.starts_with('"'))
        keyValue = text;
    else if (!readQuoted(text.substr(1)))
        state = State::Error;
}

/// Reads what follows an opening quote. False if the quote isn't closed at the end of it, or before.
bool SectionTextReader::readQuoted(std::string_view text)
{
    keyValue.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"')
            return i + 1 == text.size();
        const char escaped = text[i] == '\\' && i + 1 < text.size() ? unescaped(text[i + 1]) : '\0';
        if (escaped != '\0')
            ++i;
        keyValue += escaped != '\0' ? escaped : text[i];
    }
    return false;
}
