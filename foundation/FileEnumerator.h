#pragma once

#include <cstdint>
#include <memory>
#include <string>

/// Walks through the entries of one folder, in no order. What is made or goes meanwhile may be met or not;
/// what has gone when its turn comes is passed over. Thread: any but audio, one at a time.
class FileEnumerator {
public:
    enum class Kind { Files, Folders };

    virtual ~FileEnumerator() = default;
    /// Moves to the next match, at first to the first one. False at the end, and from then on.
    virtual bool next() = 0;
    /// The present entry's name, without its folder, byte for byte as the file system has it.
    virtual const std::string& name() const noexcept = 0;
    /// When the present entry was last written: seconds since 1970, UTC.
    virtual std::int64_t modificationTime() const noexcept = 0;
};

/// Touches nothing before the first `next`.
///
/// A link counts as what it points at, so that a walk down the folders may come by its start again; one that
/// points at nothing is no match, and neither are sockets, pipes and devices.
/// @param pattern  a path whose last part may hold "*" for any run of characters. Letters "A" to "Z" match
///                 those in lower case. A name that begins with a "." is hidden, unless the pattern's does
///                 too.
std::unique_ptr<FileEnumerator> createFileEnumerator(const std::string& pattern, FileEnumerator::Kind kind);
