#include "parameters/Abbreviation.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

struct Replacement {
    std::string_view word;
    std::string_view shortForm;
};

// In three rounds; within the last one the text is looked at after each word.
constexpr Replacement adjectives[] = {{"High ", "Hi"}, {"Low ", "Lo"}};
constexpr Replacement filterTypes[] = {{"HiPass", "HP"},   {"HiShelf", "HS"}, {"HiCut", "HC"},
                                       {"LoPass", "LP"},   {"LoShelf", "LS"}, {"LoCut", "LC"},
                                       {"Band Pass", "BP"}};
constexpr Replacement longWords[] = {{"Filter", "Fil"},      {"Frequency", "Freq"}, {"Delay", "Del"},
                                     {"Reverb", "Rev"},      {"Effect", "FX"},      {"Threshold", "Thresh"},
                                     {"Attack", "Att"},      {"Release", "Rel"},    {"Decay", "Dcy"},
                                     {"Crossover", "Cross"}, {"Side Chain", "SC"}};

// Not std::toupper and its kind, which follow the locale.
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
char toUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

void replaceAll(std::string& text, const Replacement& replacement)
{
    for (auto at = text.find(replacement.word); at != std::string::npos;
         at = text.find(replacement.word, at + replacement.shortForm.size()))
        text.replace(at, replacement.word.size(), replacement.shortForm);
}

std::string withoutBlanks(std::string text)
{
    std::erase(text, ' ');
    return text;
}

/// "Fil 1 Freq" becomes "Fil1 Freq". A 9 stays apart.
void joinNumbers(std::string& text)
{
    for (auto at = text.find(' '); at != std::string::npos; at = text.find(' ', at)) {
        if (at + 1 < text.size() && text[at + 1] >= '0' && text[at + 1] <= '8')
            text.erase(at, 1);
        else
            ++at;
    }
}

/// "Band1" becomes "B1", from the end of the text forward, until it fits.
void shortenNumberedWords(std::string& text, std::size_t maxChars)
{
    std::size_t scan = text.size();
    while (text.size() > maxChars) {
        while (scan > 0 && !isDigit(text[scan - 1]))
            --scan;
        std::size_t digits = scan;
        while (digits > 0 && isDigit(text[digits - 1]))
            --digits;
        std::size_t word = digits;
        while (word > 0 && !isUpper(text[word - 1]))
            --word;
        if (word == 0)
            return;
        text.erase(word, digits - word);
        scan = word - 1;
    }
}

std::vector<std::string_view> splitWords(std::string_view text)
{
    std::vector<std::string_view> words;
    while (!text.empty()) {
        const auto end = std::min(text.find(' '), text.size());
        if (end > 0)
            words.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

/// The first character of a word, and the digits and capitals that follow it directly.
std::string_view initialOf(std::string_view word)
{
    std::size_t length = 1;
    while (length < word.size() && (isDigit(word[length]) || isUpper(word[length])))
        ++length;
    return word.substr(0, length);
}

/// All words but the last as initials; of the last one what fits, without vowels if it must be.
std::string initials(std::string_view text, std::size_t maxChars)
{
    const std::vector<std::string_view> words = splitWords(text);
    std::string result;
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        result += initialOf(words[i]);
    const std::string_view last = words.empty() ? std::string_view() : words.back();
    if (result.size() + last.size() <= maxChars)
        return result.append(last);

    const bool numberSecond = result.size() > 1 && isDigit(result[1]) && !isDigit(result[0]);
    if (numberSecond)
        result.erase(0, 1);
    if (result.size() + last.size() <= maxChars)
        return result.append(last);

    for (const char c : last)
        if (result.size() < maxChars && std::string_view("eyuioa()-").find(c) == std::string_view::npos)
            result += c;
    return result.substr(0, maxChars);
}

template <std::size_t size>
void replaceEach(std::string& text, const Replacement (&replacements)[size])
{
    for (const Replacement& replacement : replacements)
        replaceAll(text, replacement);
}

/// The forms that a reader takes for the name itself.
void useShortForms(std::string& text, std::size_t maxChars)
{
    replaceEach(text, adjectives);
    if (text.size() <= maxChars)
        return;
    replaceEach(text, filterTypes);
    for (const Replacement& replacement : longWords) {
        if (text.size() <= maxChars)
            return;
        replaceAll(text, replacement);
    }
}

}  // namespace

std::string abbreviate(std::string_view text, std::size_t maxChars)
{
    std::string result(text);
    if (maxChars == 0 || result.size() <= maxChars)
        return result;
    useShortForms(result, maxChars);
    if (result.size() <= maxChars)
        return result;
    joinNumbers(result);
    if (result.size() <= maxChars)
        return result;
    // Where the blanks alone are too much, whole words say more than initials: "Fil1Freq" rather than "F1
    // Freq".
    if (std::string joined = withoutBlanks(result); joined.size() <= maxChars)
        return joined;
    shortenNumberedWords(result, maxChars);
    if (result.size() <= maxChars)
        return result;
    if (std::string joined = withoutBlanks(result); joined.size() <= maxChars)
        return joined;
    return initials(result, maxChars);
}

int compareIgnoringCase(std::string_view a, std::string_view b)
{
    const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(),
                                          [](char x, char y) { return toUpper(x) == toUpper(y); });
    if (inA == a.end() || inB == b.end())
        return static_cast<int>(inA != a.end()) - static_cast<int>(inB != b.end());
    return static_cast<unsigned char>(toUpper(*inA)) < static_cast<unsigned char>(toUpper(*inB)) ? -1 : 1;
}
