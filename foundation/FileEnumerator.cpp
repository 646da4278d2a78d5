#include "foundation/FileEnumerator.h"

#include "foundation/Paths.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <string_view>

namespace {

constexpr char lowerCase(char letter) noexcept
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// Each "*" first takes nothing, and one character more whenever what follows it fails to match.
bool matches(std::string_view pattern, std::string_view name) noexcept
{
    constexpr std::size_t none = std::string_view::npos;
    std::size_t p = 0;
    std::size_t n = 0;
    std::size_t star = none;
    std::size_t taken = 0;  // up to here by the last star
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            taken = n;
        } else if (p < pattern.size() && lowerCase(pattern[p]) == lowerCase(name[n])) {
            ++p;
            ++n;
        } else if (star != none) {
            p = star + 1;
            n = ++taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == none;
}

class PosixFileEnumerator : public FileEnumerator {
public:
    PosixFileEnumerator(const std::string& path, Kind wantedKind)
        : folder(folderOf(path)), pattern(fileName(path)), kind(wantedKind)
    {}

    bool next() override
    {
        if (!opened)
            search.reset(opendir(folder.empty() ? "." : folder.c_str()));
        opened = true;
        while (const dirent* entry = search ? readdir(search.get()) : nullptr) {
            if (isMatch(entry->d_name))
                return true;
        }
        search.reset();
        return false;
    }
    const std::string& name() const noexcept override { return currentName; }
    std::int64_t modificationTime() const noexcept override { return time; }

private:
    struct Close {
        void operator()(DIR* stream) const noexcept { closedir(stream); }
    };

    /// Takes over what is told of the entry if it is one.
    bool isMatch(const char* entry)
    {
        const std::string_view candidate(entry);
        if (candidate == "." || candidate == "..")
            return false;
        if (candidate.front() == '.' && !pattern.starts_with('.'))
            return false;
        if (!matches(pattern, candidate))
            return false;
        struct stat status {};
        if (fstatat(dirfd(search.get()), entry, &status, 0) != 0)
            return false;
        if (kind == Kind::Folders ? !S_ISDIR(status.st_mode) : !S_ISREG(status.st_mode))
            return false;
        currentName = candidate;
        time = status.st_mtim.tv_sec;
        return true;
    }

    const std::string folder;
    const std::string pattern;
    const Kind kind;
    bool opened = false;
    std::unique_ptr<DIR, Close> search;
    std::string currentName;
    std::int64_t time = 0;  // seconds since 1970
};

}  // namespace

std::unique_ptr<FileEnumerator> createFileEnumerator(const std::string& pattern, FileEnumerator::Kind kind)
{
    return std::make_unique<PosixFileEnumerator>(pattern, kind);
}
