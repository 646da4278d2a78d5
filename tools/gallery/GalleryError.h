#pragma once

#include <stdexcept>

namespace gallery {

/// What the person who runs the gallery has to know.
class GalleryError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace gallery
