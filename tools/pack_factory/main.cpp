#include "pack/PackError.h"
#include "pack_factory/ArchiveWriter.h"

#include <exception>
#include <fstream>
#include <iostream>

namespace {

void pack(const char* folder, const char* fileName)
{
    const std::string bytes = packFolder(folder);
    std::ofstream file(fileName, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw PackError(std::string("can't write ") + fileName);
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 3) {
        std::cerr << "usage: sordelin-pack-factory FOLDER OUT\n";
        return 2;
    }
    try {
        pack(arguments[1], arguments[2]);
        return 0;
    } catch (const PackError& error) {
        std::cerr << error.what() << '\n';  // begins as a compiler's message does
    } catch (const std::exception& error) {
        std::cerr << "sordelin-pack-factory: " << error.what() << '\n';
    }
    return 1;
}
