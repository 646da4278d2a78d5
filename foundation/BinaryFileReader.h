#pragma once

#include "foundation/BinaryDataReader.h"

#include <memory>
#include <string>

/// Reads a file. One that can't be opened isn't `good` from the start.
class BinaryFileReader : public BinaryDataReader {
public:
    explicit BinaryFileReader(const std::string& path);

private:
    explicit BinaryFileReader(std::unique_ptr<std::istream> opened);

    std::unique_ptr<std::istream> ownedStream;
};
