#include "foundation/BinaryFileReader.h"

#include "foundation/OpenFile.h"

#include <utility>

BinaryFileReader::BinaryFileReader(const std::string& path)
    : BinaryFileReader(openFile(path, std::ios_base::in | std::ios_base::binary))
{}

BinaryFileReader::BinaryFileReader(std::unique_ptr<std::istream> opened)
    : BinaryDataReader(*opened), ownedStream(std::move(opened))
{}
