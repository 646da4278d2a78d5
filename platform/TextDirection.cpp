#include "platform/TextDirection.h"

#include <algorithm>

#include <hb.h>

namespace gui {

namespace {

enum class CharacterClass { Left, Right, Number, NumberSign, NumberSeparator, Neutral, Attached };

constexpr char32_t firstRightToLeft = 0x590;  // none below: most texts are done with seeing that
constexpr char32_t leftToRightMark = 0x200E;
constexpr char32_t rightToLeftMark = 0x200F;

bool IsOneOf(char32_t character, std::u32string_view set)
{
    return set.find(character) != std::u32string_view::npos;
}

bool IsLetter(hb_unicode_general_category_t category)
{
    return category >= HB_UNICODE_GENERAL_CATEGORY_LOWERCASE_LETTER &&
           category <= HB_UNICODE_GENERAL_CATEGORY_UPPERCASE_LETTER;
}

CharacterClass ClassOf(char32_t character)
{
    if (character == leftToRightMark || character == rightToLeftMark)
        return character == leftToRightMark ? CharacterClass::Left : CharacterClass::Right;
    if (IsOneOf(character, U"+-,./:\u00A0\u2212"))
        return CharacterClass::NumberSeparator;
    if (IsOneOf(character, U"%$#\u00A3\u00A5\u20AC\u00B0\u00B1\u2030"))
        return CharacterClass::NumberSign;
    hb_unicode_funcs_t* const unicode = hb_unicode_funcs_get_default();
    const auto category = hb_unicode_general_category(unicode, character);
    if (category == HB_UNICODE_GENERAL_CATEGORY_DECIMAL_NUMBER)
        return CharacterClass::Number;
    if (category == HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK ||
        category == HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK)
        return CharacterClass::Attached;
    const hb_script_t script = hb_unicode_script(unicode, character);
    if (script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED || script == HB_SCRIPT_UNKNOWN)
        return IsLetter(category) ? CharacterClass::Left : CharacterClass::Neutral;
    return hb_script_get_horizontal_direction(script) == HB_DIRECTION_RTL ? CharacterClass::Right
                                                                          : CharacterClass::Left;
}

/// Signs and separators beside figures become figures; all others become neutral.
void JoinNumbers(std::vector<CharacterClass>& classes)
{
    const auto isNumber = [&](std::size_t i) {
        return i < classes.size() && classes[i] == CharacterClass::Number;
    };
    for (std::size_t i = 0; i < classes.size(); ++i) {
        if (classes[i] == CharacterClass::NumberSeparator && i > 0 && isNumber(i - 1) && isNumber(i + 1))
            classes[i] = CharacterClass::Number;
        if (classes[i] != CharacterClass::NumberSign)
            continue;
        std::size_t end = i;
        while (end < classes.size() && classes[end] == CharacterClass::NumberSign)
            ++end;
        const bool joins = (i > 0 && isNumber(i - 1)) || isNumber(end);
        std::fill(classes.begin() + static_cast<std::ptrdiff_t>(i),
                  classes.begin() + static_cast<std::ptrdiff_t>(end),
                  joins ? CharacterClass::Number : CharacterClass::Neutral);
    }
    std::replace(classes.begin(), classes.end(), CharacterClass::NumberSeparator, CharacterClass::Neutral);
}

/// Figures after letters that go from left to right are a part of those.
void JoinLettersAndNumbers(std::vector<CharacterClass>& classes, CharacterClass paragraph)
{
    CharacterClass letters = paragraph;
    for (CharacterClass& item : classes) {
        if (item == CharacterClass::Left || item == CharacterClass::Right)
            letters = item;
        else if (item == CharacterClass::Number && letters == CharacterClass::Left)
            item = CharacterClass::Left;
    }
}

/// What has no direction takes that of its surroundings if those agree, and else the line's.
void ResolveNeutrals(std::vector<CharacterClass>& classes, CharacterClass paragraph)
{
    const auto sideOf = [&](std::size_t i) {
        if (i >= classes.size())  // past either end
            return paragraph;
        return classes[i] == CharacterClass::Number ? CharacterClass::Right : classes[i];
    };
    for (std::size_t i = 0; i < classes.size(); ++i) {
        if (classes[i] != CharacterClass::Neutral)
            continue;
        std::size_t end = i;
        while (end < classes.size() && classes[end] == CharacterClass::Neutral)
            ++end;
        const CharacterClass before = sideOf(i - 1);
        std::fill(classes.begin() + static_cast<std::ptrdiff_t>(i),
                  classes.begin() + static_cast<std::ptrdiff_t>(end),
                  before == sideOf(end) ? before : paragraph);
    }
}

struct LevelRun {
    DirectedRun run;
    int level;  // how often it is turned around; from right to left where it is odd
};

int LevelOf(CharacterClass item, CharacterClass paragraph)
{
    if (item == CharacterClass::Right)
        return 1;
    return item == CharacterClass::Number || paragraph == CharacterClass::Right ? 2 : 0;
}

/// Turns stretches of runs at or above each level around, from the highest level on.
void ReorderRuns(std::vector<LevelRun>& runs)
{
    for (int level = 2; level >= 1; --level) {
        const auto isAbove = [level](const LevelRun& item) { return item.level >= level; };
        for (auto start = std::find_if(runs.begin(), runs.end(), isAbove); start != runs.end();) {
            const auto end = std::find_if_not(start, runs.end(), isAbove);
            std::reverse(start, end);
            start = std::find_if(end, runs.end(), isAbove);
        }
    }
}

}  // namespace

std::vector<DirectedRun> VisualRuns(std::u32string_view text)
{
    if (std::all_of(text.begin(), text.end(), [](char32_t c) { return c < firstRightToLeft; }))
        return {{0, text.size(), false}};

    std::vector<CharacterClass> classes;
    for (const char32_t character : text) {
        const CharacterClass own = ClassOf(character);
        const CharacterClass previous = classes.empty() ? CharacterClass::Neutral : classes.back();
        classes.push_back(own == CharacterClass::Attached ? previous : own);
    }
    const auto first = std::find_if(classes.begin(), classes.end(), [](CharacterClass item) {
        return item == CharacterClass::Left || item == CharacterClass::Right;
    });
    const CharacterClass paragraph = first != classes.end() ? *first : CharacterClass::Left;
    JoinNumbers(classes);
    JoinLettersAndNumbers(classes, paragraph);
    ResolveNeutrals(classes, paragraph);

    std::vector<LevelRun> runs;
    for (std::size_t i = 0; i < classes.size(); ++i) {
        const int level = LevelOf(classes[i], paragraph);
        if (runs.empty() || runs.back().level != level)
            runs.push_back({{i, 0, level % 2 == 1}, level});
        ++runs.back().run.length;
    }
    ReorderRuns(runs);
    std::vector<DirectedRun> shown;
    for (const LevelRun& item : runs)
        shown.push_back(item.run);
    return shown;
}

}  // namespace gui
