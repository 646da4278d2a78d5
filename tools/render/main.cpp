#include "render/RenderJob.h"

#include <exception>
#include <iostream>
#include <new>

int main(int argumentCount, char** arguments)
{
    try {
        if (const auto options = parseRenderOptions(argumentCount, arguments, std::cout))
            runRenderJob(*options, std::cout, std::cerr);
        return 0;
    } catch (const std::bad_alloc&) {
        std::cerr << "sordelin-render: not enough memory\n";
    } catch (const std::exception& error) {
        std::cerr << "sordelin-render: " << error.what() << '\n';
    }
    return 1;
}
