#pragma once

#include "presets/PresetLoader.h"
#include "presets/PresetWriter.h"

#include <string>

/// A preset on disk. Thread: main.
///
/// Whatever is written replaces the file as a whole or not at all, a partial rewrite too: it is made on a
/// copy in memory, and the copy takes the file's name once it is safely on disk. Wherever the process is
/// killed, the name stands for the old file or for the new one. Folders aren't created.
class PresetFile {
public:
    enum class Form { Binary, Text };

    /// @param file  UTF-8
    explicit PresetFile(std::string file) : path(std::move(file)) {}

    /// Reads the file. True on success; see PresetLoader for what `outcome` says otherwise.
    bool read(PresetLoader& loader, ErrorReporter& outcome,
              int requiredVersion = PresetLoader::anyVersion) const;
    /// Writes the whole file.
    bool write(const PresetWriter& writer, ErrorReporter& outcome, int version,
               Form form = Form::Binary) const;
    /// Writes the parameters from `firstIndex` on into a file that is of the same kind; otherwise it stays as
    /// it is, and the result is false.
    bool rewrite(const PresetWriter& writer, ErrorReporter& outcome, int version, int firstIndex,
                 int count) const;

private:
    std::string path;
};
