#pragma once

#include "foundation/FileLock.h"
#include "foundation/SettingsText.h"

#include <string>

/// A typed settings store in a file that people can read and edit. Any number of processes may read and write
/// it at once: a reader finds a whole file, and a writer loses no other's values. Thread: any but audio.
class SettingsFile {
public:
    /// Touches nothing yet. @param path  UTF-8; empty for nowhere
    /// @param patienceMs  how long a write waits for other writers
    explicit SettingsFile(std::string path, int patienceMs = FileLock::usualPatienceMs)
        : filePath(std::move(path)), patience(patienceMs)
    {}

    /// All settings that there are; none if the file can't be read or is damaged.
    SettingValues read() const;

    /// Puts `changes` in place of the values of those names, and makes the file and its folders if they
    /// aren't there. All that the user has in the file stays. A damaged file is kept beside the new one,
    /// under a name with ".damaged" in it.
    /// @return false, and everything is as it was, if the place can't be written
    bool write(const SettingValues& changes) const;

private:
    bool keepAside(const std::string& text) const;

    std::string filePath;
    int patience;  // ms
};
