#pragma once

#include <ostream>
#include <string_view>

/// Writes a text of sections, as SectionTextReader reads it. Lines end in one line feed, and an empty line
/// stands before each section but the first. What can't be written so that it reads back the same, a key with
/// a "=" or a name of a section with a "]", fails the stream. Thread: any but audio, one at a time.
class SectionTextWriter {
public:
    explicit SectionTextWriter(std::ostream& target) : stream(target) {}

    /// Everything written so far was taken.
    bool good() const { return stream.good(); }

    /// Begins a section.
    void writeSection(std::string_view name);
    /// Any bytes will do for the value.
    void writeKey(std::string_view key, std::string_view value);
    void writeKey(std::string_view key, int value);

private:
    std::ostream& stream;
    bool isFirst = true;
};
