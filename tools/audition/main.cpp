#include "audition/AuditionJob.h"

#include <exception>
#include <iostream>

int main(int argumentCount, char** arguments)
{
    constexpr int flagged = 1;
    constexpr int failed = 2;
    try {
        const auto options = parseAuditionOptions(argumentCount, arguments, std::cout);
        return !options || runAudition(*options, std::cout, std::cerr) ? 0 : flagged;
    } catch (const std::exception& error) {
        std::cerr << "sordelin-audition: " << error.what() << '\n';
        return failed;
    }
}
