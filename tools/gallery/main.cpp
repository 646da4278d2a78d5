#include "gallery/GalleryJob.h"

#include <exception>
#include <iostream>

int main(int argumentCount, char** arguments)
{
    try {
        if (const auto options = gallery::ParseGalleryOptions(argumentCount, arguments, std::cout))
            gallery::RunGalleryJob(*options, std::cout, std::cerr);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "sordelin-gallery: " << error.what() << '\n';
    }
    return 1;
}
