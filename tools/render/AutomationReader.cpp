#include "render/AutomationReader.h"

#include "clap_host/NearestNames.h"
#include "clap_host/NumberText.h"
#include "clap_host/QuotedText.h"
#include "render/RenderError.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <optional>
#include <string_view>

namespace {

/// Takes fields off the front of a line.
class FieldSplitter {
public:
    explicit FieldSplitter(std::string_view text) : rest(trimmed(text)) {}

    /// False if a quoted field doesn't end, or goes on behind its closing quote.
    bool split(std::vector<std::string>& fields)
    {
        do {
            fields.emplace_back();
            rest = rest.substr(std::min(rest.find_first_not_of(" \t"), rest.size()));
            if (!(rest.starts_with('"') ? takeQuoted(fields.back()) : takePlain(fields.back())))
                return false;
        } while (takeComma());
        return rest.empty();
    }

private:
    bool takePlain(std::string& field)
    {
        const auto end = std::min(rest.find(','), rest.size());
        field = trimmed(rest.substr(0, end));
        rest.remove_prefix(end);
        return true;
    }

    bool takeQuoted(std::string& field)
    {
        rest.remove_prefix(1);
        for (;;) {
            const auto quote = rest.find('"');
            if (quote == std::string_view::npos)
                return false;
            field += rest.substr(0, quote);
            rest.remove_prefix(quote + 1);
            if (!rest.starts_with('"'))
                break;
            field += '"';
            rest.remove_prefix(1);
        }
        rest = trimmed(rest);
        return true;
    }

    bool takeComma()
    {
        if (!rest.starts_with(','))
            return false;
        rest.remove_prefix(1);
        return true;
    }

    std::string_view rest;
};

bool isHeading(const std::string& firstField)
{
    return equalsIgnoringCase(firstField, "seconds") || equalsIgnoringCase(firstField, "time");
}

AutomationPoint pointFrom(const std::vector<std::string>& fields, const std::string& fileName, int line)
{
    if (fields.size() != 3)
        throw RenderError(linePrefix(fileName, line) + "expected seconds, parameter and value, found " +
                          std::to_string(fields.size()) + (fields.size() == 1 ? " field" : " fields"));
    const std::optional<double> seconds = parseNumber(fields[0]);
    if (!seconds || *seconds < 0.0)
        throw RenderError(linePrefix(fileName, line) + inQuotes(fields[0]) + " is no time in seconds");
    if (fields[1].empty() || fields[2].empty())
        throw RenderError(linePrefix(fileName, line) + (fields[1].empty() ? "no parameter" : "no value"));
    return {*seconds, fields[1], fields[2], line};
}

}  // namespace

std::string linePrefix(const std::string& fileName, int line)
{
    return fileName + ", line " + std::to_string(line) + ": ";
}

std::vector<AutomationPoint> readAutomation(std::istream& text, const std::string& fileName)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    std::vector<AutomationPoint> points;
    bool headingAllowed = true;
    std::string buffer;
    for (int line = 1; std::getline(text, buffer); ++line) {
        std::string_view content = buffer;
        if (line == 1 && content.starts_with(byteOrderMark))
            content.remove_prefix(byteOrderMark.size());
        content = trimmed(content);
        if (content.empty() || content.starts_with('#'))
            continue;
        std::vector<std::string> fields;
        if (!FieldSplitter(content).split(fields))
            throw RenderError(linePrefix(fileName, line) + "a quoted field doesn't end where it should");
        const bool heading = headingAllowed && isHeading(fields[0]);
        headingAllowed = false;
        if (!heading)
            points.push_back(pointFrom(fields, fileName, line));
    }
    if (text.bad())
        throw RenderError("can't read " + inQuotes(fileName));
    return points;
}

std::vector<AutomationPoint> readAutomationFile(const std::filesystem::path& file)
{
    if (std::filesystem::is_directory(file))
        throw RenderError("can't read " + inQuotes(file.string()) + ": it is a folder");
    errno = 0;
    std::ifstream text(file);
    if (!text)
        throw RenderError("can't read " + inQuotes(file.string()) + ": " + std::strerror(errno));
    return readAutomation(text, file.string());
}
