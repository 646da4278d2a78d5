#include "presets/PresetParameterCollection.h"

#include "parameters/AbstractPluginParameter.h"

#include <algorithm>
#include <vector>

namespace {

constexpr std::string_view countPrefix = "Num Active ";

std::string_view withoutBlank(std::string_view text) { return text.starts_with(' ') ? text.substr(1) : text; }

}  // namespace

int PresetParameterCollection::findKey(std::string_view key) const
{
    for (; keyedCount < count(); ++keyedCount) {
        const AbstractPluginParameter& parameter = at(keyedCount);
        keys.emplace(parameter.displayName(), keyedCount);
        for (const std::string& alias : parameter.aliases)
            keys.emplace(alias, keyedCount);
    }
    const auto found = keys.find(key);
    return found == keys.end() ? -1 : found->second;
}

std::string PresetParameterCollection::keyOf(const AbstractPluginParameter& parameter,
                                             std::string_view prefix) const
{
    const std::string_view key = parameter.displayName();
    if (prefix.empty())
        return std::string(key);
    // Lines of text files can't begin with a blank.
    if (key.starts_with(prefix))
        return std::string(withoutBlank(key.substr(prefix.size())));
    if (key.starts_with(countPrefix) && key.substr(countPrefix.size()).starts_with(prefix))
        return std::string(countPrefix).append(withoutBlank(key.substr(countPrefix.size() + prefix.size())));
    return std::string(key);
}

std::string PresetParameterCollection::fullKey(std::string_view key, std::string_view prefix) const
{
    std::string front(prefix);
    if (!prefix.empty() && key.starts_with(countPrefix) && findKey(front + std::string(key)) < 0) {
        front.insert(0, countPrefix);
        key.remove_prefix(countPrefix.size());
    }
    for (const char* blank : {"", " "}) {
        std::string candidate = front;
        candidate.append(blank).append(key);
        if (findKey(candidate) >= 0)
            return candidate;
    }
    return {};
}

std::string PresetParameterCollection::commonPrefix() const
{
    std::vector<std::string_view> all;
    for (int i = 0; i < count(); ++i)
        if (!at(i).displayName().starts_with(countPrefix))
            all.push_back(at(i).displayName());
    if (all.empty())
        return {};
    const auto [first, last] = std::minmax_element(all.begin(), all.end());
    const auto end = std::mismatch(first->begin(), first->end(), last->begin(), last->end()).first;
    std::string common(first->begin(), end);
    // Something must be left of every key: of one alone, its last word.
    if (common == *first)
        common.resize(common.find_last_of(' ') + 1);
    return common;
}
