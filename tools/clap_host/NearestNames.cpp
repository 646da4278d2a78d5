#include "clap_host/NearestNames.h"

#include "clap_host/QuotedText.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace {

char lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string lowered(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), lower);
    return result;
}

std::size_t editDistance(std::string_view a, std::string_view b)
{
    // One row of the usual table: row[j] is the distance from a's first i letters to b's first j.
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t exchanged = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({exchanged, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

/// Smaller is nearer; nothing if the two have too little in common.
std::optional<std::size_t> farness(const std::string& wanted, const std::string& name)
{
    if (!wanted.empty() && name.find(wanted) != std::string::npos)
        return 0;
    const std::size_t distance = editDistance(wanted, name);
    if (2 * distance > std::max(wanted.size(), name.size()))
        return std::nullopt;
    return distance;
}

}  // namespace

bool equalsIgnoringCase(std::string_view a, std::string_view b) noexcept
{
    return std::ranges::equal(a, b, {}, lower, lower);
}

std::vector<std::string> nearestNames(std::string_view wanted, const std::vector<std::string>& names,
                                      std::size_t limit)
{
    struct Candidate {
        std::size_t farness;
        const std::string* name;
    };
    std::vector<Candidate> candidates;
    const std::string wantedLower = lowered(wanted);
    for (const std::string& name : names) {
        if (const auto far = farness(wantedLower, lowered(name)))
            candidates.push_back({*far, &name});
    }
    std::ranges::stable_sort(candidates, {}, &Candidate::farness);
    candidates.resize(std::min(limit, candidates.size()));

    std::vector<std::string> result;
    result.reserve(candidates.size());
    for (const Candidate& candidate : candidates)
        result.push_back(*candidate.name);
    return result;
}

std::string didYouMean(std::string_view wanted, const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : nearestNames(wanted, names, 3))
        text.append(text.empty() ? "; did you mean " : ", ").append(inQuotes(name));
    return text;
}
