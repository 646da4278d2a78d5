#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Numbers to text and back, the same in every locale. Thread: any but audio.

/// Prints `value` with a format of the kind
///
///   "%.3f"   three decimals
///   "%d"     rounded to a whole number
///   "*3f"    three decimals up to 9.999, and one fewer for each further digit before the point
///   "%+.2f"  a plus sign, if the number is above 0; also "*+2f"
///
/// Infinities print as "INF" and "-INF". A zero has no sign, however it came about.
std::string formatNumber(double value, std::string_view format);

/// Hz with five digits, or with three decimals below 10.
std::string frequencyText(float hz);

/// Milliseconds as "350.0 ms", or as "1.500 sec" from one second on.
std::string timeText(float milliseconds);

/// Decibels with a sign and two decimals; "-INF" for all that lies below -179.9.
std::string dbText(float db);

/// A number at the front of a text, and what follows it.
struct LeadingNumber {
    double value;
    std::string_view rest;
};

/// Reads a decimal number with an optional sign, or an infinity, as "-INF", behind any blanks. None if `text`
/// doesn't begin with one, or with one that no double can hold.
std::optional<LeadingNumber> readNumber(std::string_view text);

/// The same for whole numbers of 32 bits.
std::optional<LeadingNumber> readWholeNumber(std::string_view text);

std::string_view skipBlanks(std::string_view text);
