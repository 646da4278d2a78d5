#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string_view>

/// Typed writing of a stream of bytes, as BinaryDataReader reads them: numbers are little-endian, without
/// alignment between them.
///
/// A failed write leaves the stream in its failed state, and what follows is dropped: the caller writes on
/// and asks `good` once, at the end. Nothing throws, as long as the stream's own exceptions are off. Thread:
/// one at a time.
class BinaryDataWriter {
public:
    explicit BinaryDataWriter(std::ostream& target) : stream(&target) {}
    BinaryDataWriter(const BinaryDataWriter&) = delete;
    BinaryDataWriter& operator=(const BinaryDataWriter&) = delete;
    virtual ~BinaryDataWriter() = default;

    /// Everything written so far was taken.
    bool good() const { return stream->good(); }

    void write(const void* buffer, std::size_t size);
    void writeInt(std::int32_t value);
    void writeFloat(float value);
    void writeUInt64(std::uint64_t value);
    /// A header. @param magic  4 characters
    void writeMagic(std::string_view magic, std::int32_t version);
    /// A 32-bit length and the bytes. A text of 2 GiB or more fails the stream.
    void writeString(std::string_view text);

private:
    template <class T>
    void writeUnsigned(T value);

    std::ostream* stream;
};
