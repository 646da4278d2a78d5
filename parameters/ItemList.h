#pragma once

#include "parameters/IndexedValueFormat.h"

#include <string>
#include <vector>

/// Item names that are only known at run time, made of one text in which commas part them. It outlives the
/// parameters that use it.
class ItemList {
public:
    explicit ItemList(std::string commaSeparated);
    ItemList(const ItemList&) = delete;
    ItemList& operator=(const ItemList&) = delete;

    ItemNames names() const noexcept { return items; }

private:
    const std::string text;
    std::vector<std::string_view> items;  // within `text`
};
