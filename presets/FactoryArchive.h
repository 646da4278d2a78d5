#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// The folders of factory content that the program carries, in one packed piece:
///
///   0      magic "MV/ISB/3", then 45 bytes that aren't read
///   53     entries, one behind the other, of 76 bytes each:
///            0    length of the name; 0 ends the level
///            1    the name, 67 bytes
///            68   32-bit size of what follows the entry and belongs to it
///            72   32-bit unpacked size of a file, or 0xFFFFFFFF for a folder
///          Behind a file's entry follows its zlib stream; behind a folder's, its entries and their end.
///
/// Numbers are little-endian. Nothing in the data is trusted: no size leads out of it, and no name out of the
/// folder that is written to. Thread: any but audio.
class FactoryArchive {
public:
    enum class Existing { Keep, Replace };

    static constexpr std::string_view magic = "MV/ISB/3";
    static constexpr std::size_t headerSize = 53;
    static constexpr std::size_t entrySize = 76;
    static constexpr std::size_t longestName = 67;
    static constexpr std::size_t sizeOffset = 68;
    static constexpr std::size_t unpackedSizeOffset = 72;
    static constexpr std::uint32_t folderMark = 0xFFFFFFFF;
    static constexpr int deepestFolder = 32;  // no content of ours has more than a few

    /// @param data  must outlive this
    explicit FactoryArchive(std::span<const std::byte> data) : archive(data) {}

    /// Writes what a folder at the top of the archive holds into `target`, which is made if it isn't there.
    /// Each file is replaced as a whole, or kept where `existing` says so. What can't be unpacked or written
    /// doesn't stop the rest.
    /// @return false if the archive, the folder in it or the target is missing, or if anything in it failed
    bool extract(std::string_view folder, const std::string& target, Existing existing) const;

private:
    std::span<const std::byte> archive;
};
