#include "parameters/IndexedValueFormat.h"

#include "parameters/Abbreviation.h"
#include "parameters/NumberText.h"

#include <algorithm>

namespace {

/// The positions that a preset version knew, beyond `low` and up to `high`.
struct VersionRange {
    int low;
    int high;
    bool isFirst;
};

VersionRange rangeForVersion(const IndexedValueFormat& format, int version) noexcept
{
    VersionRange range{format.minimum, format.maximum, true};
    for (const auto& step : format.versionLimits) {
        if (version <= step.version) {
            range.high = step.limit;
            return range;
        }
        range.low = step.limit;
        range.isFirst = false;
    }
    return range;
}

/// Rounds to the nearest of the steps from 0 to `range`.
int stepOf(float normal, int range) noexcept
{
    if (range <= 0)
        return 0;
    const double step = (0.5 / range + normal) * range;
    return step > 0.0 ? static_cast<int>(std::min(step, static_cast<double>(range))) : 0;
}

}  // namespace

int IndexedValueFormat::positionOf(float value) const noexcept
{
    if (!(value >= static_cast<float>(minimum)))
        return minimum;
    return static_cast<int>(std::min(value, static_cast<float>(maximum)));
}

int IndexedValueFormat::rawOf(int position) const noexcept
{
    if (valueMap.empty())
        return position;
    const int last = static_cast<int>(valueMap.size()) - 1;
    return valueMap[static_cast<std::size_t>(std::clamp(position - valueMapBase, 0, last))];
}

int IndexedValueFormat::positionOfRaw(int raw) const noexcept
{
    if (valueMap.empty())
        return raw;
    const auto found = std::find(valueMap.begin(), valueMap.end(), raw);
    return valueMapBase + (found == valueMap.end() ? 0 : static_cast<int>(found - valueMap.begin()));
}

float IndexedValueFormat::toNormal(float value) const noexcept
{
    if (maximum <= minimum)
        return 0.0f;
    return static_cast<float>(positionOf(value) - minimum) / static_cast<float>(maximum - minimum);
}

float IndexedValueFormat::fromNormal(float normal) const noexcept
{
    return static_cast<float>(stepOf(normal, maximum - minimum) + minimum);
}

float IndexedValueFormat::toNormalForVersion(float value, int version) const noexcept
{
    if (versionLimits.empty())
        return toNormal(value);
    const VersionRange range = rangeForVersion(*this, version);
    const auto low = static_cast<float>(range.low);
    const auto high = static_cast<float>(range.high);
    return value <= low || value > high ? 0.0f : (value - low) / (high - low);
}

std::optional<float> IndexedValueFormat::fromNormalForVersion(float normal, int version) const noexcept
{
    if (versionLimits.empty())
        return fromNormal(normal);
    const VersionRange range = rangeForVersion(*this, version);
    const int step = stepOf(normal, range.high - range.low);
    // The lowest step of a later stretch stands for "none of these".
    if (!range.isFirst && step == 0)
        return std::nullopt;
    return static_cast<float>(range.low + step);
}

int IndexedValueFormat::limitForVersion(int version) const noexcept
{
    for (const VersionLimit& step : versionLimits)
        if (step.version == version)
            return step.limit;
    return -1;
}

std::string IndexedValueFormat::text(float value) const
{
    const int position = positionOf(value);
    const auto place = static_cast<std::size_t>(position - minimum);
    if (place < items.size())
        return std::string(items[place]);
    return formatNumber(rawOf(position), "%d");
}

std::string IndexedValueFormat::shortText(float value, std::size_t maxChars) const
{
    return abbreviate(text(value), maxChars);
}

std::optional<float> IndexedValueFormat::parse(std::string_view typed) const
{
    auto found = std::find(items.begin(), items.end(), typed);
    if (found == items.end())
        found = std::find_if(items.begin(), items.end(), [typed](std::string_view item) {
            return compareIgnoringCase(item, typed) == 0;
        });
    if (found != items.end())
        return static_cast<float>(found - items.begin() + minimum);

    const auto number = readWholeNumber(typed);
    if (!number)
        return std::nullopt;
    const int position = positionOfRaw(static_cast<int>(number->value));
    const bool inRange = position >= minimum && position <= maximum;
    return inRange ? std::optional(static_cast<float>(position)) : std::nullopt;
}
