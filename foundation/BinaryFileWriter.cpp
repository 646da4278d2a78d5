#include "foundation/BinaryFileWriter.h"

#include "foundation/OpenFile.h"

#include <utility>

BinaryFileWriter::BinaryFileWriter(const std::string& path)
    : BinaryFileWriter(openFile(path, std::ios_base::out | std::ios_base::trunc | std::ios_base::binary))
{}

BinaryFileWriter::BinaryFileWriter(std::unique_ptr<std::ostream> opened)
    : BinaryDataWriter(*opened), ownedStream(std::move(opened))
{}
