#include "parameters/FrequencyParameterUnits.h"

#include "dsp/Conversions.h"
#include "parameters/NumberText.h"

namespace {

/// The semitone of a note's letter above C; -1 if it is no note.
int semitoneOf(char letter)
{
    switch (letter) {
    case 'C':
    case 'c':
        return 0;
    case 'D':
    case 'd':
        return 2;
    case 'E':
    case 'e':
        return 4;
    case 'F':
    case 'f':
        return 5;
    case 'G':
    case 'g':
        return 7;
    case 'A':
    case 'a':
        return 9;
    case 'B':
    case 'b':
        return 11;
    default:
        return -1;
    }
}

/// Takes the sharp or flat off the front of `text`.
int takeAccidental(std::string_view& text)
{
    const char sign = text.empty() ? ' ' : text.front();
    if (sign != '#' && sign != 'b' && sign != 'B')
        return 0;
    text.remove_prefix(1);
    return sign == '#' ? 1 : -1;
}

double takeNumber(std::string_view& text, const std::optional<LeadingNumber>& number, double otherwise)
{
    if (!number)
        return otherwise;
    text = number->rest;
    return number->value;
}

}  // namespace

std::optional<float> FreqParameterUnit::parseName(std::string_view text) const
{
    text = skipBlanks(text);
    const int letter = text.empty() ? -1 : semitoneOf(text.front());
    if (letter < 0)
        return std::nullopt;
    text.remove_prefix(1);
    const int semitone = letter + takeAccidental(text);
    const auto octaveNumber = readWholeNumber(text);
    const double octave = takeNumber(text, octaveNumber, 4.0);
    const double cents = octaveNumber ? takeNumber(text, readNumber(text), 0.0) : 0.0;
    if (!skipBlanks(text).empty())
        return std::nullopt;  // a word, not a note

    // The note A4 is semitone 69 and log2 of 440 Hz.
    return static_cast<float>(((octave + 1.0) * 12.0 + cents * 0.01 + semitone - 69.0) * 0.083333336 +
                              8.78136);
}

void FreqParameterUnit::configure(FloatValueFormat& format) const { format.textFormatter = frequencyText; }

void ExpFreqParameterUnit::configure(FloatValueFormat& format) const
{
    FreqParameterUnit::configure(format);
    format.shown = {octaveToRatio, ratioToOctave};
}

void ExpFreqWithZeroParameterUnit::configure(FloatValueFormat& format) const
{
    FreqParameterUnit::configure(format);
    format.shown = {octaveToRatioWithZero, ratioToOctaveWithZero};
}
