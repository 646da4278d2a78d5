#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <string_view>

/// Typed reading of a stream of bytes: numbers are little-endian, without alignment between them.
///
/// A short read leaves the stream in its failed state, and what couldn't be read counts as 0: the caller
/// reads on and asks `good` once, at the end. Nothing throws, as long as the stream's own exceptions are off.
/// Thread: one at a time.
class BinaryDataReader {
public:
    explicit BinaryDataReader(std::istream& source) : stream(&source) {}
    BinaryDataReader(const BinaryDataReader&) = delete;
    BinaryDataReader& operator=(const BinaryDataReader&) = delete;
    virtual ~BinaryDataReader() = default;

    /// Everything read so far was there.
    bool good() const { return stream->good(); }
    /// Of the header that `readMagic` read; -1 before.
    int version() const noexcept { return headerVersion; }

    /// Fills `size` bytes at `buffer`.
    void read(void* buffer, std::size_t size);
    std::int32_t readInt();
    float readFloat();
    std::uint64_t readUInt64();

    /// Reads a header, 4 characters and a 32-bit version. True if it was there and its characters are
    /// `magic`; the stream stands behind it in any case.
    bool readMagic(std::string_view magic);

    /// Reads a 32-bit length and so many bytes into `text`. A length below 1 gives an empty text, and so does
    /// one that the stream doesn't hold.
    void readString(std::string& text);

private:
    template <class T>
    T readUnsigned();

    std::istream* stream;
    std::int32_t headerVersion = -1;
};
