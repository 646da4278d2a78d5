#include "render/ParameterTable.h"

#include <algorithm>
#include <array>
#include <iomanip>

namespace {

using Row = std::array<std::string, 5>;

Row rowOf(const ClapParameters& parameters, const ClapParameter& parameter)
{
    const auto text = [&](double value) { return parameters.toText(parameter.id, value); };
    return {std::to_string(parameter.id), parameter.name, parameter.module,
            text(parameter.minimum) + " .. " + text(parameter.maximum), text(parameter.defaultValue)};
}

}  // namespace

void printParameterTable(const ClapParameters& parameters, std::ostream& out)
{
    std::vector<Row> rows{{"Id", "Name", "Module", "Range", "Default"}};
    for (const ClapParameter& parameter : parameters.list())
        rows.push_back(rowOf(parameters, parameter));

    std::array<std::size_t, 5> widths{};
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], row[column].size());
    }
    for (const Row& row : rows) {
        out << std::right << std::setw(static_cast<int>(widths[0])) << row[0] << std::left;
        for (std::size_t column = 1; column + 1 < row.size(); ++column)
            out << "  " << std::setw(static_cast<int>(widths[column])) << row[column];
        out << "  " << row.back() << '\n';
    }
}
