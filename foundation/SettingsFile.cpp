#include "foundation/SettingsFile.h"

#include "foundation/AtomicFile.h"
#include "foundation/Paths.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace {

// Settings are some lines; what is longer by far isn't ours to read.
constexpr std::size_t mostBytes = 1 << 20;
constexpr int mostKeptAside = 100;

struct Contents {
    bool readable = false;  // a file that isn't there reads as an empty one
    std::string text;
};

Contents readAll(int file)
{
    Contents contents;
    std::array<char, 4096> piece;
    ssize_t count = 0;
    while ((count = read(file, piece.data(), piece.size())) != 0) {
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || contents.text.size() > mostBytes)
            return {};
        contents.text.append(piece.data(), static_cast<std::size_t>(count));
    }
    contents.readable = true;
    return contents;
}

Contents contentsOf(const std::string& path)
{
    // Not blocking: what has the name may be a pipe.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return {errno == ENOENT, {}};
    struct stat status {};
    const bool isFile = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    Contents contents = isFile ? readAll(file) : Contents();
    close(file);
    return contents;
}

bool replace(const std::string& path, const std::string& text)
{
    AtomicFile file(path);
    file.stream() << text;
    ErrorResult result;
    return file.commit(result);
}

}  // namespace

SettingValues SettingsFile::read() const
{
    return parseSettings(contentsOf(filePath).text).value_or(SettingValues());
}

bool SettingsFile::write(const SettingValues& changes) const
{
    if (filePath.empty() || !createFolders(std::string(folderOf(filePath))))
        return false;
    std::string lockName(folderOf(filePath));
    const FileLock lock(lockName.append(".").append(fileName(filePath)).append(".lock"), patience);
    if (!lock.isHeld())
        return false;
    Contents contents = contentsOf(filePath);
    if (!contents.readable)
        return false;
    if (!parseSettings(contents.text)) {
        if (!keepAside(contents.text))
            return false;
        contents.text.clear();
    }
    const std::string changed = changeSettings(contents.text, changes);
    return changed == contents.text || replace(filePath, changed);
}

bool SettingsFile::keepAside(const std::string& text) const
{
    std::string stem(folderOf(filePath));
    stem.append(baseName(filePath)).append(".damaged");
    for (int number = 1; number <= mostKeptAside; ++number) {
        std::string aside = stem;
        if (number > 1)
            aside.append("-").append(std::to_string(number));
        aside.append(".toml");
        if (!fileExists(aside))
            return replace(aside, text);
    }
    return false;
}
