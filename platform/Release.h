#pragma once

namespace gui {

/// Lets a `std::unique_ptr` own what a C library gives and takes back by a function of its own.
template <auto release>
struct Release {
    template <class T>
    void operator()(T* object) const
    {
        release(object);
    }
};

}  // namespace gui
