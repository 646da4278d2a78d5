#pragma once

#include <stdexcept>

/// A rendering that can't be done: what() is the one line that the person at the terminal gets.
class RenderError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
