#include "platform/TextLines.h"

#include <algorithm>

namespace gui {

namespace {

constexpr std::string_view ellipsis = "\u2026";

std::string_view WithoutTrailingSpaces(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// The places behind each character.
std::vector<std::size_t> CharacterEnds(std::string_view text)
{
    std::vector<std::size_t> ends;
    for (std::size_t end = 0; end < text.size();)
        ends.push_back(end += CharacterLength(text.substr(end)));
    return ends;
}

/// How many of the characters of `text`, at least one, make a line that fits: its bytes.
std::size_t FittingCharacters(std::string_view text, const FitsLine& fits)
{
    const std::vector<std::size_t> ends = CharacterEnds(text);
    const auto tooLong = std::partition_point(ends.begin() + 1, ends.end(),
                                              [&](std::size_t end) { return fits(text.substr(0, end)); });
    return *(tooLong - 1);
}

/// How much of `text` makes a line: up to a space that is followed by too much, or into a word.
std::size_t LineLength(std::string_view text, const FitsLine& fits)
{
    std::size_t length = 0;
    for (std::size_t end = 0; end < text.size();) {
        end = std::min(text.find(' ', text.find_first_not_of(' ', end)), text.size());
        if (!fits(text.substr(0, end)))
            break;
        length = end;
    }
    if (length > 0 || text.empty())
        return length;
    const std::size_t wordEnd = std::min(text.find(' ', text.find_first_not_of(' ')), text.size());
    return FittingCharacters(text.substr(0, wordEnd), fits);
}

void WrapParagraph(std::vector<std::string>& lines, std::string_view text, const FitsLine& fits)
{
    do {
        const std::size_t length = LineLength(text, fits);
        lines.emplace_back(WithoutTrailingSpaces(text.substr(0, length)));
        text.remove_prefix(length);
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    } while (!text.empty());
}

}  // namespace

std::string CutWithEllipsis(std::string_view text, const FitsLine& fits)
{
    if (fits(text))
        return std::string(text);
    const auto cutAt = [text](std::size_t end) {
        return std::string(WithoutTrailingSpaces(text.substr(0, end))).append(ellipsis);
    };
    const std::vector<std::size_t> ends = CharacterEnds(text);
    const auto tooLong =
        std::partition_point(ends.begin(), ends.end(), [&](std::size_t end) { return fits(cutAt(end)); });
    return tooLong == ends.begin() ? std::string(ellipsis) : cutAt(*(tooLong - 1));
}

std::vector<std::string> WrapWords(std::string_view text, const FitsLine& fits)
{
    std::vector<std::string> lines;
    for (;;) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        WrapParagraph(lines, text.substr(0, end), fits);
        if (end == text.size())
            return lines;
        text.remove_prefix(end + 1);
    }
}

}  // namespace gui
