#include "platform/TextFieldModel.h"

#include "platform/X11Keyboard.h"

#include <algorithm>

namespace gui {

namespace {

constexpr std::size_t undoSteps = 100;

std::u32string printable(const std::string& utf8)
{
    std::u32string text;
    for (const char32_t point : X11Keyboard::CodePoints(utf8))
        if (point >= U' ' && point != 0x7F)
            text += point;
    return text;
}

void append(std::string& utf8, char32_t point)
{
    if (point < 0x80) {
        utf8 += static_cast<char>(point);
        return;
    }
    const int more = point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
    constexpr unsigned char leads[] = {0, 0xC0, 0xE0, 0xF0};
    utf8 += static_cast<char>(leads[more] | point >> 6 * more);
    for (int i = more - 1; i >= 0; --i)
        utf8 += static_cast<char>(0x80 | (point >> 6 * i & 0x3F));
}

}  // namespace

void TextFieldModel::SetText(const std::string& utf8)
{
    points = printable(utf8);
    caret = anchor = Length();
    undo.clear();
    typing = false;
}

std::string TextFieldModel::TextBetween(int first, int last) const
{
    std::string utf8;
    for (int i = first; i < last; ++i)
        append(utf8, points[static_cast<std::size_t>(i)]);
    return utf8;
}

int TextFieldModel::Clamp(int place) const { return place < 0 ? Length() : std::min(place, Length()); }

void TextFieldModel::Select(int first, int last)
{
    anchor = Clamp(first);
    caret = Clamp(last);
    typing = false;
}

// Letters of any language: what isn't plain punctuation.
bool TextFieldModel::IsWordPoint(char32_t point)
{
    return point >= 0x80 || (point >= U'0' && point <= U'9') || (point >= U'a' && point <= U'z') ||
           (point >= U'A' && point <= U'Z') || point == U'_';
}

void TextFieldModel::SelectWordAt(int place)
{
    int first = Clamp(place), last = first;
    const auto at = [this](int i) { return IsWordPoint(points[static_cast<std::size_t>(i)]); };
    while (first > 0 && at(first - 1))
        --first;
    while (last < Length() && at(last))
        ++last;
    Select(first, last);
}

int TextFieldModel::Target(bool forwards, Step step) const
{
    if (step == Step::End)
        return forwards ? Length() : 0;
    if (step == Step::Character)
        return std::clamp(caret + (forwards ? 1 : -1), 0, Length());
    int place = caret;
    const auto next = [&] {
        return IsWordPoint(points[static_cast<std::size_t>(forwards ? place : place - 1)]);
    };
    const auto more = [&] { return forwards ? place < Length() : place > 0; };
    // Over what lies between, then over the word, backwards; the other way round forwards.
    for (const bool word : {forwards, !forwards})
        while (more() && next() == word)
            place += forwards ? 1 : -1;
    return place;
}

void TextFieldModel::Move(bool forwards, Step step, bool extends)
{
    typing = false;
    if (!extends && HasSelection() && step == Step::Character)
        caret = forwards ? SelectionEnd() : SelectionStart();
    else
        caret = Target(forwards, step);
    if (!extends)
        anchor = caret;
}

void TextFieldModel::Remember(bool isTyping)
{
    if (!(isTyping && typing && !HasSelection()))
        undo.push_back({points, caret, anchor});
    if (undo.size() > undoSteps)
        undo.erase(undo.begin());
    typing = isTyping;
}

void TextFieldModel::EraseSelection()
{
    const int first = SelectionStart();
    points.erase(static_cast<std::size_t>(first), static_cast<std::size_t>(SelectionEnd() - first));
    caret = anchor = first;
}

bool TextFieldModel::Insert(const std::string& utf8)
{
    const std::u32string inserted = printable(utf8);
    if (inserted.empty())
        return false;
    Remember(inserted.size() == 1);
    EraseSelection();
    points.insert(static_cast<std::size_t>(caret), inserted);
    caret = anchor = caret + static_cast<int>(inserted.size());
    return true;
}

bool TextFieldModel::Erase(bool forwards, Step step)
{
    const int target = HasSelection() ? anchor : Target(forwards, step);
    if (target == caret)
        return false;
    Remember(false);
    anchor = target;
    EraseSelection();
    return true;
}

bool TextFieldModel::Undo()
{
    if (undo.empty())
        return false;
    points = std::move(undo.back().points);
    caret = undo.back().caret;
    anchor = undo.back().anchor;
    undo.pop_back();
    typing = false;
    return true;
}

}  // namespace gui
