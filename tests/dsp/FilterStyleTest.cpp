#include "dsp/FilterStyles.h"

#include "foundation/BinaryDataReader.h"
#include "foundation/Resources.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <sstream>
#include <string>

namespace {

constexpr int size = DesignFilterStyle::tableSize;
using Row = std::array<float, size>;

void append(std::string& bytes, std::uint32_t number)
{
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<char>((number >> shift) & 255));
}

void append(std::string& bytes, float number) { append(bytes, std::bit_cast<std::uint32_t>(number)); }

/// A file over 2..12 octaves, a column each. The tables are `c + 100 r` with 0.25, 0.5 and 0.75 added, so
/// that every lookup tells where it read.
std::string countingFile()
{
    std::string bytes = "MVil";
    append(bytes, std::uint32_t{1});
    for (const float number : {0.5f, 2.0f, 12.0f})
        append(bytes, number);
    for (const float added : {0.25f, 0.5f, 0.75f}) {
        append(bytes, std::uint32_t{size});
        for (int row = 0; row < size; ++row) {
            for (int column = 0; column < size; ++column)
                append(bytes, static_cast<float>(column) + 100.0f * static_cast<float>(row) + added);
        }
    }
    return bytes;
}

bool readInto(DesignFilterStyle& style, const std::string& bytes)
{
    std::istringstream stream(bytes);
    BinaryDataReader reader(stream);
    return style.read(reader);
}

struct Range {
    float lowest;
    float highest;
};

Range rangeOf(const FilterSettingTable& table)
{
    Range range{table.valueAt(0, 0), table.valueAt(0, 0)};
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column) {
            range.lowest = std::min(range.lowest, table.valueAt(row, column));
            range.highest = std::max(range.highest, table.valueAt(row, column));
        }
    }
    return range;
}

void expectRow(const FilterSettingTable& table, int row, const Row& expected)
{
    for (int column = 0; column < size; ++column)
        EXPECT_FLOAT_EQ(table.valueAt(row, column), expected[static_cast<std::size_t>(column)])
            << "row " << row << ", column " << column;
}

Row all(float value)
{
    Row row;
    row.fill(value);
    return row;
}

}  // namespace

TEST(FilterSettingTable, ReadsOnStraightLinesBetweenFourPoints)
{
    FilterSettingTable table(2);
    table.set(0, 0, 1.0f);
    table.set(0, 1, 2.0f);
    table.set(1, 0, 5.0f);
    table.set(1, 1, 10.0f);
    struct Case {
        float column, row, value;
    };
    for (const auto& [column, row, value] : {
             Case{0.0f, 0.0f, 1.0f}, Case{1.0f, 0.0f, 2.0f}, Case{0.0f, 1.0f, 5.0f}, Case{1.0f, 1.0f, 10.0f},
             Case{0.25f, 0.0f, 1.25f},  // a quarter from 1 to 2
             Case{1.0f, 0.5f, 6.0f},    // half from 2 to 10
             Case{0.5f, 0.75f, 6.0f},   // 1.5 above, 7.5 below
         })
        EXPECT_FLOAT_EQ(table.lookup(column, row), value) << column << ", " << row;
}

TEST(DesignFilterStyle, FindsPeakInRowsAndFrequencyInColumns)
{
    DesignFilterStyle style({}, 1.5f);
    ASSERT_TRUE(readInto(style, countingFile()));
    EXPECT_EQ(style.gain(), 1.5f);
    EXPECT_EQ(style.asymmetry(), 0.5f);
    struct Case {
        float frequencyLog2, peak, place;
    };
    for (const auto& [frequencyLog2, peak, place] : {
             Case{2.0f, 0.0f, 0.0f}, Case{3.5f, 0.0f, 1.5f}, Case{2.0f, 0.25f, 250.0f},
             Case{9.0f, 0.5f, 507.0f}, Case{7.25f, 1.0f, 1005.25f},  // row 10 itself
             Case{12.0f, 1.0f, 1010.0f},                             // the last point
             Case{1.0f, 0.5f, 500.0f},                               // below the axis
             Case{-30.0f, 0.5f, 500.0f}, Case{15.0f, 0.5f, 510.0f},  // above it
         }) {
        const auto found = style.characteristicAt(frequencyLog2, peak);
        EXPECT_FLOAT_EQ(found.clipDrive, place + 0.25f) << frequencyLog2 << ", " << peak;
        EXPECT_FLOAT_EQ(found.cubic, place + 0.5f) << frequencyLog2 << ", " << peak;
        EXPECT_FLOAT_EQ(found.resonance, place + 0.75f) << frequencyLog2 << ", " << peak;
    }
}

TEST(DesignFilterStyle, NeverDrivesBelowATenth)
{
    std::string bytes = countingFile();
    std::fill_n(bytes.begin() + 24, 4, '\0');  // the first drive becomes 0
    DesignFilterStyle style;
    ASSERT_TRUE(readInto(style, bytes));
    EXPECT_EQ(style.characteristicAt(2.0f, 0.0f).clipDrive, 0.1f);
}

TEST(DesignFilterStyle, BuildsItsClipperForTheAsymmetryOfTheFile)
{
    // Far above 0 the curve nears pi / (2 a), here pi, and pi / 0.6 for the default of 0.3; far below it is
    // -pi / 2.
    DesignFilterStyle style;
    const auto atTop = [&] { return style.clipTable().table().lookup(40.0f); };
    EXPECT_NEAR(atTop(), 5.236 - 1.0 / (0.09 * 40.0), 0.002);
    ASSERT_TRUE(readInto(style, countingFile()));
    EXPECT_NEAR(atTop(), 3.1416 - 1.0 / (0.25 * 40.0), 0.001);
    EXPECT_NEAR(style.clipTable().table().lookup(-40.0f), -1.5708 + 1.0 / 40.0, 0.001);
}

TEST(DesignFilterStyle, IsAPlainResonantFilterWithoutAReadableFile)
{
    std::string wrongMagic = countingFile();
    wrongMagic[3] = 'L';
    std::string wrongSize = countingFile();
    wrongSize[20] = 12;
    for (const std::string& bytes : {std::string(), wrongMagic, wrongSize, countingFile().substr(0, 10)}) {
        DesignFilterStyle style;
        EXPECT_FALSE(readInto(style, bytes));
        for (const float peak : {0.0f, 0.35f, 1.0f}) {
            const auto found = style.characteristicAt(9.0f, peak);
            EXPECT_FLOAT_EQ(found.resonance, peak);
            EXPECT_EQ(found.cubic, 0.0f);
            EXPECT_EQ(found.clipDrive, 0.1f);
        }
    }
    EXPECT_EQ(DesignFilterStyle("Nothing.fil").characteristicAt(9.0f, 1.0f).resonance, 1.0f);
}

TEST(DesignFilterStyle, KeepsTheTablesThatAShortFileHolds)
{
    DesignFilterStyle style;
    EXPECT_FALSE(readInto(style, countingFile().substr(0, 1000)));  // ends in front of the resonance
    const auto found = style.characteristicAt(7.0f, 1.0f);
    EXPECT_FLOAT_EQ(found.clipDrive, 1005.25f);
    EXPECT_FLOAT_EQ(found.cubic, 1005.5f);
    EXPECT_FLOAT_EQ(found.resonance, 1.0f);
}

TEST(FilterStyles, AllTenStayWithinTheirRanges)
{
    struct Expected {
        const char* file;
        float gain, asymmetry, lowestDrive, highestDrive, highestCubic, highestResonance;
    };
    constexpr std::array table{
        Expected{"Prime.fil", 1.8f, 0.3f, 1.5f, 8.0f, 0.1f, 3.5f},
        Expected{"Gentle.fil", 1.0f, 0.31709f, 0.1f, 10.0f, 0.0847f, 0.999f},
        Expected{"Raw.fil", 1.0f, 1.0f, 0.1f, 10.0f, 0.0943f, 1.5f},
        Expected{"Tube.fil", 1.0f, 1.0f, 0.1f, 10.0f, 0.1f, 2.9553f},
        Expected{"Metal.fil", 1.0f, 0.1f, 0.1f, 3.2445f, 0.0268f, 3.7683f},
        Expected{"EasyGoing.fil", 1.0f, 0.543188f, 0.1f, 7.7546f, 0.0495f, 3.6885f},
        Expected{"Smooth.fil", 1.0f, 0.181958f, 0.1f, 10.0f, 0.1f, 1.3489f},
        Expected{"Monopoly.fil", 1.4f, 0.687329f, 0.1f, 10.0f, 0.0783f, 4.3098f},
        Expected{"Cheap.fil", 1.0f, 0.913428f, 0.1f, 10.0f, 0.0965f, 1.8879f},
        Expected{"Extreme.fil", 1.0f, 0.128784f, 0.1f, 10.0f, 0.1f, 3.4382f},
    };
    const FilterStyles styles;
    ASSERT_EQ(styles.size(), static_cast<int>(table.size()));
    for (int i = 0; i < styles.size(); ++i) {
        const Expected& expected = table[static_cast<std::size_t>(i)];
        SCOPED_TRACE(expected.file);
        EXPECT_EQ(findResource(expected.file).size(), 1484u);
        const DesignFilterStyle& style = styles.at(i);
        EXPECT_EQ(style.gain(), expected.gain);
        EXPECT_FLOAT_EQ(style.asymmetry(), expected.asymmetry);
        EXPECT_FLOAT_EQ(rangeOf(style.clipDriveTable()).lowest, expected.lowestDrive);
        EXPECT_FLOAT_EQ(rangeOf(style.clipDriveTable()).highest, expected.highestDrive);
        EXPECT_EQ(rangeOf(style.cubicTable()).lowest, 0.0f);
        EXPECT_FLOAT_EQ(rangeOf(style.cubicTable()).highest, expected.highestCubic);
        EXPECT_FLOAT_EQ(rangeOf(style.resonanceTable()).highest, expected.highestResonance);
    }
}

TEST(FilterStyles, AtNoPeakNothingResonatesAndOnlyPrimeIsDriven)
{
    const FilterStyles styles;
    for (int i = 0; i < styles.size(); ++i) {
        SCOPED_TRACE(i);
        const bool hard = i == 7;
        EXPECT_FLOAT_EQ(styles.at(i).minimumFrequency(), hard ? 3.061522f : 2.2666f);
        EXPECT_FLOAT_EQ(styles.at(i).maximumFrequency(), hard ? 15.602884f : 16.2064f);
        expectRow(styles.at(i).resonanceTable(), 0, all(0.0f));
        expectRow(styles.at(i).clipDriveTable(), 0, all(i == 0 ? 2.5f : 0.1f));
    }
}

TEST(FilterStyles, ResonanceAboveOneBelongsToTheLowColumnsOfTheHighRows)
{
    const FilterStyles styles;
    for (int i = 0; i < styles.size(); ++i) {
        SCOPED_TRACE(i);
        const FilterSettingTable& resonance = styles.at(i).resonanceTable();
        EXPECT_FLOAT_EQ(resonance.valueAt(size - 1, 0), rangeOf(resonance).highest);
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < size; ++column)
                EXPECT_LT(resonance.valueAt(row, column), 1.0f) << row << ", " << column;
        for (int column = size - 3; column < size; ++column)
            EXPECT_NEAR(resonance.valueAt(size - 1, column), 1.0f, 0.25f) << column;
    }
}

TEST(FilterStyles, RawRisesEvenly)
{
    const FilterStyles styles;
    const DesignFilterStyle& raw = styles.at(2);
    Row drive = all(4.9884f);
    drive[9] = 5.05f;
    expectRow(raw.clipDriveTable(), 5, drive);
    drive = all(9.8767f);
    drive[9] = 10.0f;
    expectRow(raw.clipDriveTable(), 10, drive);
    expectRow(raw.cubicTable(), 10,
              {0.017f, 0.017f, 0.017f, 0.017f, 0.017f, 0.017f, 0.0231f, 0.0411f, 0.0411f, 0.0943f, 0.0411f});
    expectRow(raw.resonanceTable(), 5,
              {0.75f, 0.75f, 0.75f, 0.75f, 0.75f, 0.6389f, 0.54f, 0.5095f, 0.4961f, 0.4984f, 0.4911f});
    expectRow(raw.resonanceTable(), 10,
              {1.5f, 1.5f, 1.5f, 1.5f, 1.5f, 1.2778f, 1.0801f, 1.019f, 0.9922f, 0.9968f, 0.9822f});
}

TEST(FilterStyles, PrimeOpensItsClipperAtTheBottom)
{
    const FilterStyles styles;
    const DesignFilterStyle& prime = styles.at(0);
    expectRow(prime.clipDriveTable(), 10, {1.5f, 1.5f, 1.5f, 2.0f, 2.0f, 2.5f, 2.5f, 3.0f, 4.0f, 8.0f, 8.0f});
    expectRow(prime.cubicTable(), 10,
              {0.001f, 0.001f, 0.001f, 0.003f, 0.01f, 0.03f, 0.04f, 0.07f, 0.1f, 0.1f, 0.1f});
    expectRow(prime.resonanceTable(), 10, {3.5f, 3.5f, 3.5f, 3.5f, 3.0f, 2.5f, 1.5f, 1.2f, 1.0f, 1.0f, 1.0f});
}
