#pragma once

#include "foundation/BinaryDataWriter.h"

#include <memory>
#include <string>

/// Writes a file in place, replacing its contents at once. What must not be lost when the writing fails goes
/// through AtomicFile instead. A file that can't be opened isn't `good` from the start.
class BinaryFileWriter : public BinaryDataWriter {
public:
    explicit BinaryFileWriter(const std::string& path);

private:
    explicit BinaryFileWriter(std::unique_ptr<std::ostream> opened);

    std::unique_ptr<std::ostream> ownedStream;
};
