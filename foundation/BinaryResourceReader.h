#pragma once

#include "foundation/BinaryDataReader.h"

#include <memory>
#include <string_view>

/// Reads a file that the program carries.
class BinaryResourceReader : public BinaryDataReader {
public:
    /// Throws EResource if there is none of this name.
    explicit BinaryResourceReader(std::string_view name);

private:
    explicit BinaryResourceReader(std::unique_ptr<std::istream> opened);

    std::unique_ptr<std::istream> ownedStream;
};
