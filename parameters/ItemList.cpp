#include "parameters/ItemList.h"

#include <algorithm>
#include <utility>

ItemList::ItemList(std::string commaSeparated) : text(std::move(commaSeparated))
{
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        items.push_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}
