#include "dsp/FilterSettingTable.h"

#include "foundation/BinaryDataReader.h"

#include <algorithm>
#include <cmath>

FilterSettingTable::FilterSettingTable(int rowsAndColumns)
    : count(rowsAndColumns),
      values(static_cast<std::size_t>(rowsAndColumns + 1) * static_cast<std::size_t>(rowsAndColumns + 1)),
      slopes(values.size())
{}

void FilterSettingTable::set(int row, int column, float value)
{
    values[place(row, column)] = value;
    updateSlopes(row);
}

void FilterSettingTable::readValues(BinaryDataReader& reader)
{
    for (int row = 0; row < count; ++row) {
        for (int column = 0; column < count; ++column)
            values[place(row, column)] = reader.readFloat();
        updateSlopes(row);
    }
}

float FilterSettingTable::largest() const noexcept
{
    float found = 0.0f;
    for (const float value : values) {
        if (std::isnan(value))
            return value;
        found = std::max(found, std::fabs(value));
    }
    return found;
}

float FilterSettingTable::lookup(float column, float row) const noexcept
{
    const int c = std::clamp(static_cast<int>(column), 0, count - 1);
    const int r = std::clamp(static_cast<int>(row), 0, count - 1);
    const float u = column - static_cast<float>(c);
    const float v = row - static_cast<float>(r);
    const std::size_t upper = place(r, c);
    const std::size_t lower = place(r + 1, c);
    const float a = values[upper] + u * slopes[upper];
    const float b = values[lower] + u * slopes[lower];
    return a + (b - a) * v;
}

void FilterSettingTable::updateSlopes(int row)
{
    for (int column = 0; column + 1 < count; ++column)
        slopes[place(row, column)] = values[place(row, column + 1)] - values[place(row, column)];
}
