#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

/// A new empty folder that goes, with all in it, at the end of the test.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "sordelin-test-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            throw std::runtime_error("no temporary folder");
        path = pattern;
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path operator/(const char* name) const { return path / name; }

    void write(const char* name, const std::string& content) const { std::ofstream(path / name) << content; }

    std::string read(const char* name) const
    {
        std::ifstream file(path / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::ptrdiff_t entryCount() const
    {
        return std::distance(std::filesystem::directory_iterator(path),
                             std::filesystem::directory_iterator());
    }

private:
    std::filesystem::path path;
};
