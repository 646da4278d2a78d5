#pragma once

#include "foundation/ErrorResult.h"

#include <ostream>
#include <sstream>
#include <string>

/// A small file that is replaced as a whole or not at all: whatever fails, and whenever the power goes, the
/// name stands for the old contents or for the new ones.
///
/// What is written is held in memory until `commit`. A link keeps pointing where it points, and the file
/// behind it is the one replaced; an existing file's permissions stay. Thread: any but audio, one at a time.
class AtomicFile {
public:
    /// Touches nothing yet. @param path  UTF-8
    explicit AtomicFile(std::string path) : filePath(std::move(path)) {}

    std::ostream& stream() noexcept { return contents; }

    /// Writes aside in the same folder, and then renames. On failure the old file is as it was, nothing is
    /// left beside it, and `result` says what went wrong. A file that its owner may not write is refused.
    bool commit(ErrorReporter& result);

private:
    std::string filePath;
    std::ostringstream contents;
};
