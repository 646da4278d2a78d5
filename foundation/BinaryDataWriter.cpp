#include "foundation/BinaryDataWriter.h"

#include <array>
#include <bit>
#include <limits>

void BinaryDataWriter::write(const void* buffer, std::size_t size)
{
    stream->write(static_cast<const char*>(buffer), static_cast<std::streamsize>(size));
}

template <class T>
void BinaryDataWriter::writeUnsigned(T value)
{
    std::array<unsigned char, sizeof(T)> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(value >> 8 * i & 0xFF);
    write(bytes.data(), bytes.size());
}

void BinaryDataWriter::writeInt(std::int32_t value) { writeUnsigned(static_cast<std::uint32_t>(value)); }

void BinaryDataWriter::writeFloat(float value) { writeUnsigned(std::bit_cast<std::uint32_t>(value)); }

void BinaryDataWriter::writeUInt64(std::uint64_t value) { writeUnsigned(value); }

void BinaryDataWriter::writeMagic(std::string_view magic, std::int32_t version)
{
    write(magic.data(), magic.size());
    writeInt(version);
}

void BinaryDataWriter::writeString(std::string_view text)
{
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        stream->setstate(std::ios_base::failbit);
        return;
    }
    writeInt(static_cast<std::int32_t>(text.size()));
    write(text.data(), text.size());
}
