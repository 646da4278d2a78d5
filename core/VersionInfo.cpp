#include "core/VersionInfo.h"

#include <charconv>
#include <optional>

namespace {

std::optional<int> number(std::string_view text)
{
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc())
        return std::nullopt;
    return value;
}

}  // namespace

VersionInfo VersionInfo::fromText(std::string_view text)
{
    const std::size_t point = text.find('.');
    const bool whole = point == std::string_view::npos || text.size() - point - 1 < 2;
    const auto majorNumber = number(whole ? text : text.substr(0, point));
    const auto minorNumber = whole ? 0 : number(text.substr(point + 1, 1));
    const auto patchNumber = whole ? 0 : number(text.substr(point + 2, 1));
    if (!majorNumber || *majorNumber < 1 || !minorNumber || *minorNumber < 0)
        return {};
    return {*majorNumber, *minorNumber, patchNumber.value_or(0)};
}

std::string VersionInfo::nameOf(const std::string& product) const
{
    return major > 1 ? product + " " + std::to_string(major) : product;
}

std::string VersionInfo::toText() const
{
    return std::to_string(major) + "." + std::to_string(minor) + std::to_string(patch);
}
