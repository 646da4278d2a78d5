#include "platform/FileRequest.h"

#include "foundation/TextCompare.h"

#include <algorithm>

namespace gui {

namespace {

std::vector<std::string> split(std::string_view text, char separator)
{
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = std::min(text.find(separator), text.size());
        parts.emplace_back(text.substr(0, end));
        if (end == text.size())
            return parts;
        text.remove_prefix(end + 1);
    }
}

}  // namespace

std::vector<FileRequest::Filter> FileRequest::ParseFilters(std::string_view text)
{
    const std::vector<std::string> parts = split(text, '|');
    std::vector<Filter> filters;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2)
        filters.push_back({parts[i], split(parts[i + 1], ';')});
    return filters;
}

bool FileRequest::Matches(const Filter& filter, std::string_view name)
{
    return std::any_of(filter.patterns.begin(), filter.patterns.end(), [name](std::string_view pattern) {
        if (pattern == "*" || pattern == "*.*")
            return true;
        if (!pattern.starts_with('*'))
            return compareNoCase(pattern, name) == 0;
        pattern.remove_prefix(1);
        return name.size() >= pattern.size() &&
               compareNoCase(name.substr(name.size() - pattern.size()), pattern) == 0;
    });
}

std::string FileRequest::WithExtension(std::string path) const
{
    const std::size_t nameStart = path.rfind('/') + 1;
    const bool hasExtension = path.find('.', nameStart + 1) != std::string::npos;
    if (kind == Kind::SaveFile && !defaultExtension.empty() && !path.empty() && !hasExtension)
        path += '.' + defaultExtension;
    return path;
}

}  // namespace gui
