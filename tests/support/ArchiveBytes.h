#pragma once

#include <zlib.h>

#include <cstdint>
#include <stdexcept>
#include <string>

// Factory archives put together by hand.

/// 32 bits, low byte first.
inline std::string archiveNumber(std::uint32_t value)
{
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(value >> shift & 0xFF);
    return bytes;
}

inline std::string archiveEntry(const std::string& name, std::uint32_t size, std::uint32_t unpackedSize)
{
    std::string bytes(1, static_cast<char>(name.size()));
    bytes.append(name).resize(68, '\xA5');  // the unused rest may hold anything
    return bytes.append(archiveNumber(size)).append(archiveNumber(unpackedSize));
}

inline std::string archiveEnd() { return std::string(76, '\0'); }

inline std::string deflated(const std::string& content)
{
    uLongf size = compressBound(static_cast<uLong>(content.size()));
    std::string packed(size, '\0');
    if (compress(reinterpret_cast<Bytef*>(packed.data()), &size,
                 reinterpret_cast<const Bytef*>(content.data()), static_cast<uLong>(content.size())) != Z_OK)
        throw std::runtime_error("compress");
    packed.resize(size);
    return packed;
}

inline std::string archiveFile(const std::string& name, const std::string& content)
{
    const std::string packed = content.empty() ? "" : deflated(content);
    return archiveEntry(name, static_cast<std::uint32_t>(packed.size()),
                        static_cast<std::uint32_t>(content.size()))
        .append(packed);
}

/// @param entries  one behind the other, without the end
inline std::string archiveFolder(const std::string& name, const std::string& entries)
{
    return archiveEntry(name, static_cast<std::uint32_t>(entries.size() + 76), 0xFFFFFFFF)
        .append(entries)
        .append(archiveEnd());
}

inline std::string archiveOf(const std::string& entries)
{
    return std::string("MV/ISB/3").append(45, '\x5A').append(entries).append(archiveEnd());
}
