#include "presets/FactoryArchive.h"

#include "foundation/AtomicFile.h"
#include "foundation/Paths.h"
#include "foundation/TextCompare.h"

#include <zlib.h>

#include <algorithm>

namespace {

using Bytes = std::span<const std::byte>;

// No stream of the format grows by more than this: a size beyond it is a lie, and takes no memory.
constexpr std::size_t highestRatio = 1040;

std::string_view textOf(Bytes bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

std::uint32_t numberAt(Bytes bytes, std::size_t offset)
{
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;)
        number = number << 8 | std::to_integer<std::uint32_t>(bytes[offset + i]);
    return number;
}

/// One entry, and the bytes that belong to it.
struct Entry {
    std::string_view name;
    std::uint32_t unpackedSize = 0;
    Bytes data;

    bool isFolder() const noexcept { return unpackedSize == FactoryArchive::folderMark; }
};

/// Walks through the entries of one level.
class Level {
public:
    explicit Level(Bytes bytes) : rest(bytes) {}

    /// False at the level's end, and where it can't be read any further.
    bool next(Entry& entry)
    {
        if (!isWhole || rest.size() < FactoryArchive::entrySize) {
            isWhole = false;
            return false;
        }
        const auto nameLength = std::to_integer<std::size_t>(rest[0]);
        if (nameLength == 0)
            return false;
        const std::size_t size = numberAt(rest, FactoryArchive::sizeOffset);
        isWhole =
            nameLength <= FactoryArchive::longestName && size <= rest.size() - FactoryArchive::entrySize;
        if (!isWhole)
            return false;
        entry.name = textOf(rest.subspan(1, nameLength));
        entry.unpackedSize = numberAt(rest, FactoryArchive::unpackedSizeOffset);
        entry.data = rest.subspan(FactoryArchive::entrySize, size);
        rest = rest.subspan(FactoryArchive::entrySize + size);
        return true;
    }
    /// True if the end was where it should be.
    bool endedWell() const noexcept { return isWhole; }

private:
    Bytes rest;
    bool isWhole = true;
};

/// True for a name of one file or folder, and nothing else.
bool isPlainName(std::string_view name)
{
    constexpr std::string_view separators("/\\\0", 3);
    return name != "." && name != ".." && name.find_first_of(separators) == std::string_view::npos;
}

/// False if the stream doesn't give exactly `unpacked.size()` bytes.
bool inflateWhole(Bytes packed, std::string& unpacked)
{
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK)
        return false;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<std::byte*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(unpacked.data());
    stream.avail_out = static_cast<uInt>(unpacked.size());
    const int result = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    return result == Z_STREAM_END && stream.avail_out == 0;
}

class Extractor {
public:
    explicit Extractor(FactoryArchive::Existing existingFiles) : existing(existingFiles) {}

    /// @param target  with the separator at its end
    bool extractFolder(Bytes data, const std::string& target, int depth) const
    {
        if (depth > FactoryArchive::deepestFolder || !createFolders(target))
            return false;
        bool good = true;
        Level level(data);
        for (Entry entry; level.next(entry);)
            good = extractEntry(entry, target, depth) && good;
        return good && level.endedWell();
    }

private:
    bool extractEntry(const Entry& entry, const std::string& target, int depth) const
    {
        if (!isPlainName(entry.name))
            return false;
        const std::string path = std::string(target).append(entry.name);
        return entry.isFolder() ? extractFolder(entry.data, withSeparator(path), depth + 1)
                                : extractFile(entry, path);
    }

    bool extractFile(const Entry& entry, const std::string& path) const
    {
        if (existing == FactoryArchive::Existing::Keep && fileExists(path))
            return true;
        if (entry.unpackedSize > entry.data.size() * highestRatio)
            return false;
        std::string content(entry.unpackedSize, '\0');
        if (entry.unpackedSize != 0 && !inflateWhole(entry.data, content))
            return false;
        AtomicFile file(path);
        file.stream() << content;
        ErrorResult result;
        return file.commit(result);
    }

    const FactoryArchive::Existing existing;
};

}  // namespace

bool FactoryArchive::extract(std::string_view folder, const std::string& target, Existing existing) const
{
    if (target.empty() || archive.size() < headerSize || !textOf(archive).starts_with(magic))
        return false;
    Level level(archive.subspan(headerSize));
    for (Entry entry; level.next(entry);) {
        if (entry.isFolder() && compareNoCase(entry.name, folder) == 0)
            return Extractor(existing).extractFolder(entry.data, withSeparator(target), 0);
    }
    return false;
}
