#include "foundation/BinaryDataReader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace {

constexpr std::size_t magicLength = 4;
// A damaged length may claim gigabytes: memory is taken only as fast as bytes arrive.
constexpr std::size_t textPiece = 65536;

}  // namespace

void BinaryDataReader::read(void* buffer, std::size_t size)
{
    stream->read(static_cast<char*>(buffer), static_cast<std::streamsize>(size));
    const auto there = static_cast<std::size_t>(stream->gcount());
    if (there < size)
        std::memset(static_cast<char*>(buffer) + there, 0, size - there);
}

template <class T>
T BinaryDataReader::readUnsigned()
{
    std::array<unsigned char, sizeof(T)> bytes{};
    read(bytes.data(), bytes.size());
    T value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;)
        value = static_cast<T>((value << 8) | bytes[i]);
    return value;
}

std::int32_t BinaryDataReader::readInt() { return static_cast<std::int32_t>(readUnsigned<std::uint32_t>()); }

float BinaryDataReader::readFloat() { return std::bit_cast<float>(readUnsigned<std::uint32_t>()); }

std::uint64_t BinaryDataReader::readUInt64() { return readUnsigned<std::uint64_t>(); }

bool BinaryDataReader::readMagic(std::string_view magic)
{
    std::array<char, magicLength> characters{};
    read(characters.data(), characters.size());
    headerVersion = readInt();
    return good() && std::string_view(characters.data(), characters.size()) == magic;
}

void BinaryDataReader::readString(std::string& text)
{
    text.clear();
    const std::int32_t length = readInt();
    std::size_t missing = length > 0 ? static_cast<std::size_t>(length) : 0;
    while (missing > 0 && good()) {
        const std::size_t piece = std::min(missing, textPiece);
        text.resize(text.size() + piece);
        read(text.data() + text.size() - piece, piece);
        missing -= piece;
    }
    if (!good())
        text.clear();
}
