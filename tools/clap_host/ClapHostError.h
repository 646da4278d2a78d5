#pragma once

#include <stdexcept>

/// Whatever goes wrong between this host and a module: what() is one line that a person can act on.
class ClapHostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
