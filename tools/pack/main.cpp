#include "pack/CharacteristicFile.h"
#include "pack/CharacteristicText.h"
#include "pack/PackError.h"

#include <exception>
#include <fstream>
#include <iostream>

namespace {

void pack(const std::string& textName, const std::string& fileName)
{
    std::ifstream text(textName);
    if (!text)
        throw PackError("can't read " + textName);
    const std::string bytes = characteristicFile(readCharacteristicText(text, textName));
    std::ofstream file(fileName, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw PackError("can't write " + fileName);
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 3) {
        std::cerr << "usage: sordelin-pack-fil TEXT OUT.fil\n";
        return 2;
    }
    try {
        pack(arguments[1], arguments[2]);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "sordelin-pack-fil: " << error.what() << '\n';
        return 1;
    }
}
