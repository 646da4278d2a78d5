#pragma once

#include <stdexcept>

/// A text that can't be packed: what() is one line, with the file and the line where the trouble is.
class PackError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
