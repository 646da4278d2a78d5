#pragma once

#include <istream>
#include <string>
#include <string_view>

/// Reads a text of sections, line by line:
///
///   ; a comment
///   [Section]
///   Key=value
///   Key="a value with \"quotes\" and a line break \n"
///
/// Blanks before a line, around a key and around a value don't count; a value that needs them stands in
/// quotes, and so does one with a line break, which is "\n" or "\r" there. A backslash before anything but n,
/// r, a quote or a backslash stands for itself. Line ends of any system will do.
///
/// A line that is none of these is a syntax error and ends the text: a header without its "]", a line without
/// "=" or without a key, a key before the first section, a quote that isn't closed on its line, and anything
/// behind a "]" or a closing quote. Thread: any but audio, one at a time.
class SectionTextReader {
public:
    explicit SectionTextReader(std::istream& source);

    /// Goes on to the next section, over what is left of the present one. False at the end and at an error.
    bool nextSection();
    /// Goes on to the next key of the section. False at the section's end, and at an error.
    bool nextKey();

    const std::string& section() const noexcept { return sectionName; }
    const std::string& key() const noexcept { return keyName; }
    const std::string& value() const noexcept { return keyValue; }

    /// Of the line read last, from 1: where a section begins, where a key stands, or what has the error.
    int lineNumber() const noexcept { return linesRead; }

    bool hasSyntaxError() const noexcept { return state == State::Error; }

private:
    enum class State { BeforeFirst, AtHeader, InSection, End, Error };

    bool nextLine();
    void readHeader();
    void readKey();
    bool readQuoted(std::string_view text);

    std::istream& stream;
    State state = State::BeforeFirst;
    std::string line;
    int linesRead = 0;
    std::string_view content;  // of the line
    std::string headerAhead;   // the section that begins at AtHeader
    std::string sectionName;
    std::string keyName;
    std::string keyValue;
};
