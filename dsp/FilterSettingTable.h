#pragma once

#include "foundation/Realtime.h"

#include <cstddef>
#include <vector>

class BinaryDataReader;

/// One number of a filter characteristic over peak (rows) and frequency (columns), read on straight lines
/// between its points.
///
///     slopes[r][c] = values[r][c + 1] - values[r][c], 0 in the last column used
///
/// A row and a column of zeros lie behind the last ones, so that a lookup at the very edge needs no case of
/// its own.
class FilterSettingTable {
public:
    /// @param rowsAndColumns  at least 2
    explicit FilterSettingTable(int rowsAndColumns);

    int size() const noexcept REALTIME { return count; }
    float valueAt(int row, int column) const noexcept REALTIME { return values[place(row, column)]; }
    /// Thread: main.
    void set(int row, int column, float value);

    /// Reads `size() * size()` floats, row by row. What isn't there is 0. Thread: main.
    void readValues(BinaryDataReader& reader);
    /// The largest magnitude; no number if one of the values is none.
    float largest() const noexcept;

    /// @param column  in columns, 0..size - 1
    /// @param row     in rows, 0..size - 1
    float lookup(float column, float row) const noexcept REALTIME;

private:
    std::size_t place(int row, int column) const noexcept REALTIME
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(count + 1) +
               static_cast<std::size_t>(column);
    }
    void updateSlopes(int row);

    int count;
    std::vector<float> values;
    std::vector<float> slopes;
};
