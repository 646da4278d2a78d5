#include "foundation/BinaryResourceReader.h"

#include "foundation/Resources.h"

#include <utility>

BinaryResourceReader::BinaryResourceReader(std::string_view name) : BinaryResourceReader(openResource(name))
{}

BinaryResourceReader::BinaryResourceReader(std::unique_ptr<std::istream> opened)
    : BinaryDataReader(*opened), ownedStream(std::move(opened))
{}
