#pragma once

#include "dsp/FilterStyles.h"
#include "dsp/StateVariableTables.h"

/// What the filters of all instances in a process read: made with the first instance, gone with the last one.
struct FilterResources {
    StateVariableTables tables;
    FilterStyles styles;

    /// Each call is matched by a `release`. Thread: main.
    static const FilterResources& acquire();
    static void release();
};

/// Holds the resources for the life of its owner.
class FilterResourcesHold {
public:
    FilterResourcesHold() : resources(FilterResources::acquire()) {}
    FilterResourcesHold(const FilterResourcesHold&) = delete;
    FilterResourcesHold& operator=(const FilterResourcesHold&) = delete;
    ~FilterResourcesHold() { FilterResources::release(); }

    const FilterResources& resources;
};
