#pragma once

#include "dsp/DesignFilterStyle.h"

#include <vector>

/// The filter characteristics that come from tables, in the order in which they are offered. They are read
/// from the resources at construction, once per process; all filters of all instances share them.
class FilterStyles {
public:
    /// Thread: main.
    FilterStyles();

    int size() const noexcept REALTIME { return static_cast<int>(styles.size()); }
    /// @param index  0..size() - 1
    const DesignFilterStyle& at(int index) const noexcept REALTIME
    {
        return styles[static_cast<std::size_t>(index)];
    }

private:
    std::vector<DesignFilterStyle> styles;
};
