#pragma once

#include "foundation/Property.h"

#include <atomic>
#include <string>

/// Which preset a plug-in is at. Thread: main, but for `modified`, which any thread may set.
struct PresetState {
    /// @param observer  hears of every change, or null
    explicit PresetState(PropertyOwner* observer = nullptr)
        : name(std::string(), observer), path(std::string(), observer), modified(modifiedFlag, observer)
    {}

    Property<std::string> name;
    Property<std::string> path;  // empty if there is no such file

private:
    /// The audio thread sets it with a parameter, and the others read it.
    struct Flag {
        bool value() const noexcept { return set.load(std::memory_order_relaxed); }
        void assign(bool isSet) noexcept { set.store(isSet, std::memory_order_relaxed); }
        std::atomic<bool> set{false};
    };
    Flag modifiedFlag;

public:
    DelegatingProperty<bool, Flag> modified;  // a parameter has changed since it was loaded or saved
};
