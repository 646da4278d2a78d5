#include "pack_factory/ArchiveWriter.h"

#include "pack/PackError.h"
#include "pack_factory/PresetText.h"
#include "presets/FactoryArchive.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

namespace fs = std::filesystem;

void putNumber(std::string& bytes, std::size_t offset, std::size_t number)
{
    for (int i = 0; i < 4; ++i)
        bytes[offset + static_cast<std::size_t>(i)] = static_cast<char>(number >> (8 * i) & 0xFF);
}

/// An entry and what belongs to it. @param unpackedSize  of a file, or the mark of a folder
std::string entryOf(const fs::path& path, const std::string& data, std::size_t unpackedSize)
{
    const std::string name = path.filename().string();
    if (name.size() > FactoryArchive::longestName)
        throw PackError(path.string() + ": the name is longer than " +
                        std::to_string(FactoryArchive::longestName) + " bytes");
    std::string entry(FactoryArchive::entrySize, '\0');
    entry[0] = static_cast<char>(name.size());
    std::copy(name.begin(), name.end(), entry.begin() + 1);
    putNumber(entry, FactoryArchive::sizeOffset, data.size());
    putNumber(entry, FactoryArchive::unpackedSizeOffset, unpackedSize);
    return entry.append(data);
}

std::string deflated(const std::string& content)
{
    uLongf size = compressBound(static_cast<uLong>(content.size()));
    std::string packed(size, '\0');
    if (compress2(reinterpret_cast<Bytef*>(packed.data()), &size,
                  reinterpret_cast<const Bytef*>(content.data()), static_cast<uLong>(content.size()),
                  Z_BEST_COMPRESSION) != Z_OK)
        throw PackError("zlib has no memory");
    packed.resize(size);
    return packed;
}

std::string packFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    if (!file.good() && !file.eof())
        throw PackError("can't read " + path.string());
    const std::string preset = packPreset(text, fs::canonical(path).string());
    return entryOf(path, deflated(preset), preset.size());
}

/// The entries of a folder with their end.
std::string packLevel(const fs::path& folder)
{
    std::vector<fs::path> paths;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.path().filename().string().front() != '.')
            paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end(), [](const fs::path& a, const fs::path& b) {
        return a.filename().string() < b.filename().string();
    });
    std::string level;
    for (const fs::path& path : paths)
        level.append(fs::is_directory(path) ? entryOf(path, packLevel(path), FactoryArchive::folderMark)
                                            : packFile(path));
    return level.append(FactoryArchive::entrySize, '\0');
}

}  // namespace

std::string packFolder(const fs::path& folder)
{
    if (!fs::is_directory(folder))
        throw PackError("no such folder: " + folder.string());
    std::string archive(FactoryArchive::magic);
    archive.resize(FactoryArchive::headerSize, '\0');
    archive.append(packLevel(folder));
    constexpr std::size_t lengthOffset = FactoryArchive::magic.size();
    putNumber(archive, lengthOffset, archive.size() - lengthOffset - 4);  // of what follows it
    return archive;
}
