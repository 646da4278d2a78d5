#include "dsp/FilterStyles.h"
#include "voicing/VoicingPlot.h"

#include <array>
#include <exception>
#include <filesystem>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>

namespace {

struct Picture {
    const char* name;
    const char* file;
};
/// In the order of the styles.
constexpr std::array pictures{
    Picture{"Morvelane Prime", "prime.png"},
    Picture{"Gentle", "gentle.png"},
    Picture{"Raw", "raw.png"},
    Picture{"Tube", "tube.png"},
    Picture{"Metal", "metal.png"},
    Picture{"Easy Going", "easy-going.png"},
    Picture{"Smooth", "smooth.png"},
    Picture{"Hard", "hard.png"},
    Picture{"Hollow", "hollow.png"},
    Picture{"Extreme", "extreme.png"},
};

/// True if `name` is among `wanted`, or if nothing is wanted in particular.
bool isWanted(const std::string& name, std::span<char*> wanted)
{
    bool found = wanted.empty();
    for (const char* one : wanted)
        found = found || name == one;
    return found;
}

void drawPictures(const std::filesystem::path& folder, std::span<char*> wanted)
{
    std::filesystem::create_directories(folder);
    const FilterStyles styles;
    for (int i = 0; i < styles.size(); ++i) {
        const Picture& picture = pictures[static_cast<std::size_t>(i)];
        if (!isWanted(picture.name, wanted))
            continue;
        const std::filesystem::path file = folder / picture.file;
        if (!writeVoicingPlot(styles.at(i), picture.name, file))
            throw std::runtime_error("can't write " + file.string());
        std::cout << file.string() << '\n';
    }
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    const std::span<char*> words(arguments, static_cast<std::size_t>(argumentCount));
    if (words.size() < 2 || std::string(words[1]).starts_with("-")) {
        std::cerr << "usage: sordelin-voicing FOLDER [NAME...]\n"
                     "Draws each filter characteristic, or those named, as the running filter sounds.\n";
        return 2;
    }
    try {
        drawPictures(words[1], words.subspan(2));
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "sordelin-voicing: " << error.what() << '\n';
        return 1;
    }
}
