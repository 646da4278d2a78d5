#pragma once

#include "presets/PresetInfo.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Finds presets by words in what is known of them. A word is a run of letters and digits, in whatever letter
/// case; all characters beyond ASCII count as letters. Thread: one at a time.
class PresetWordIndex {
public:
    enum class Field { Name = 0, Author = 1, Description = 2, Tag = 3 };

    /// @param preset  must stay as it is until it is removed. Not owned
    /// @param folder  where it lies, relative to the root; its words count as words of the name
    void add(std::uint64_t hash, const PresetInfo& preset, std::string_view folder);
    void remove(std::uint64_t hash);

    /// The presets that have a word beginning so for each word of the text: those first that have all of them
    /// in their names, else in the order of the hashes. None for a text without words.
    std::vector<const PresetInfo*> find(std::string_view text) const;

private:
    struct Record {
        std::uint64_t hash;
        const PresetInfo* preset;
        Field field;
    };

    using Records = std::multimap<std::string, Record, std::less<>>;

    void addText(std::uint64_t hash, const PresetInfo& preset, Field field, std::string_view text);

    Records records;  // by word, in lower case
    std::map<std::uint64_t, std::vector<Records::iterator>> places;
};
