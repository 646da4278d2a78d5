#include "presets/PresetWordIndex.h"

#include <algorithm>

namespace {

bool isLetterOrDigit(char c) noexcept
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || (c & 0x80) != 0;
}

/// The words of a text in lower case.
std::vector<std::string> wordsOf(std::string_view text)
{
    std::vector<std::string> words;
    for (auto start = std::find_if(text.begin(), text.end(), isLetterOrDigit); start != text.end();) {
        const auto end = std::find_if_not(start, text.end(), isLetterOrDigit);
        words.emplace_back(start, end);
        for (char& c : words.back())
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        start = std::find_if(end, text.end(), isLetterOrDigit);
    }
    return words;
}

/// A preset found so far, and the field of the word that was found least prominently.
struct Hit {
    const PresetInfo* preset;
    PresetWordIndex::Field field;
};

}  // namespace

void PresetWordIndex::add(std::uint64_t hash, const PresetInfo& preset, std::string_view folder)
{
    addText(hash, preset, Field::Name, preset.name);
    addText(hash, preset, Field::Name, folder);
    addText(hash, preset, Field::Author, preset.author);
    addText(hash, preset, Field::Description, preset.description);
    for (const std::string& tag : preset.tags)
        addText(hash, preset, Field::Tag, tag);
}

void PresetWordIndex::addText(std::uint64_t hash, const PresetInfo& preset, Field field,
                              std::string_view text)
{
    for (std::string& word : wordsOf(text))
        places[hash].push_back(records.emplace(std::move(word), Record{hash, &preset, field}));
}

void PresetWordIndex::remove(std::uint64_t hash)
{
    for (const Records::iterator place : places[hash])
        records.erase(place);
    places.erase(hash);
}

std::vector<const PresetInfo*> PresetWordIndex::find(std::string_view text) const
{
    std::map<std::uint64_t, Hit> found;
    bool isFirst = true;
    for (const std::string& word : wordsOf(text)) {
        std::map<std::uint64_t, Hit> withThisWord;
        for (auto place = records.lower_bound(word); place != records.end() && place->first.starts_with(word);
             ++place) {
            const Record& record = place->second;
            if (isFirst || found.contains(record.hash)) {
                Hit& hit =
                    withThisWord.try_emplace(record.hash, Hit{record.preset, record.field}).first->second;
                hit.field = std::min(hit.field, record.field);
            }
        }
        for (auto& [hash, hit] : withThisWord) {
            if (!isFirst)
                hit.field = std::max(hit.field, found.find(hash)->second.field);
        }
        found = std::move(withThisWord);
        isFirst = false;
    }
    std::vector<Hit> hits;
    for (const auto& [hash, hit] : found)
        hits.push_back(hit);
    std::stable_sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) { return a.field < b.field; });
    std::vector<const PresetInfo*> presets;
    for (const Hit& hit : hits)
        presets.push_back(hit.preset);
    return presets;
}
