#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// What a folder holds, as far as it was read.
struct FolderTree {
    struct File {
        std::string name;
        std::uint64_t modificationTime = 0;  // seconds since 1970
    };

    std::string name;  // its place in the folder above; empty for the root
    bool exists = false;
    bool answered = false;  // of the root: false if it is unknown what it holds
    std::vector<std::unique_ptr<FolderTree>> folders;
    std::vector<File> files;
};
