#include "pack/CharacteristicText.h"
#include "pack/CharacteristicFile.h"
#include "pack/PackError.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

constexpr const char* heading = "asymmetry 0.5\nfrequencies 2 16\n";

/// Eleven rows that count up from `first` in steps of 1/2, one table in 12 lines.
std::string table(const std::string& name, double first)
{
    std::ostringstream text;
    text << name << '\n';
    for (int row = 0; row < 11; ++row) {
        text << (row < 10 ? "0." + std::to_string(row) : "1.0") << ':';
        for (int column = 0; column < 11; ++column)
            text << ' ' << first + 0.5 * (11 * row + column);
        text << '\n';
    }
    return text.str();
}

std::string allTables() { return table("resonance", 200) + table("clipDrive", 0) + table("cubic", 100); }

CharacteristicTables read(const std::string& text)
{
    std::istringstream stream(text);
    return readCharacteristicText(stream, "Test.txt");
}

std::string messageFor(const std::string& text)
{
    try {
        read(text);
    } catch (const PackError& error) {
        return error.what();
    }
    return "no error";
}

}  // namespace

TEST(CharacteristicText, ReadsTablesInAnyOrderBetweenComments)
{
    const CharacteristicTables tables =
        read("# Test\r\n\n" + std::string(heading) + "cubic # damping\n" + table("cubic", 100).substr(6) +
             table("resonance", 200) + "  # between\n" + table("clipDrive", 0));
    EXPECT_EQ(tables.asymmetry, 0.5f);
    EXPECT_EQ(tables.minimumFrequency, 2.0f);
    EXPECT_EQ(tables.maximumFrequency, 16.0f);
    EXPECT_EQ(tables.clipDrive[120], 60.0f);
    EXPECT_EQ(tables.cubic[11], 105.5f);  // row 1, column 0
    EXPECT_EQ(tables.resonance[10], 205.0f);
}

TEST(CharacteristicText, TellsTheLineThatDoesNotFit)
{
    const std::string start(heading);
    struct Row {
        std::string text;
        const char* message;
    };
    for (const auto& [text, message] : {
             Row{"asymmetry\n", "Test.txt:1: \"asymmetry\" needs 1 numbers, found 0"},
             Row{"\nasymmetry 0,3\n", "Test.txt:2: \"0,3\" is no number"},
             Row{"asymmetry 0\n", "Test.txt:1: the asymmetry must lie above 0"},
             Row{"frequencies 16 2\n", "Test.txt:1: the frequencies must rise"},
             Row{"cubik\n",
                 "Test.txt:1: \"cubik\" is neither asymmetry, frequencies, clipDrive, cubic nor resonance"},
             Row{"cubic 1 2\n", "Test.txt:1: the rows of \"cubic\" begin on the next line"},
             Row{"0.0: 1\n", "Test.txt:1: the row \"0.0:\" belongs to no table"},
             Row{"cubic\n0.1: 1\n", "Test.txt:2: expected the row \"0.0:\", found \"0.1:\""},
             Row{"cubic\n0.0: 1 2\n", "Test.txt:2: \"0.0:\" needs 11 numbers, found 2"},
             Row{"cubic\n0.0: 0 0 0 0 -1 0 0 0 0 0 0\n", "Test.txt:2: a number below 0"},
             Row{"cubic\n0.0: 0 0 0 0 nan 0 0 0 0 0 0\n", "Test.txt:2: \"nan\" is no number"},
             Row{"cubic\nresonance\n", "Test.txt:2: cubic ends before the row \"0.0:\""},
             Row{start + allTables() + "cubic\n", "Test.txt:39: a second table cubic"},
             Row{start, "Test.txt:2: no table clipDrive"},
             Row{allTables(), "Test.txt:36: no asymmetry"},
         })
        EXPECT_EQ(messageFor(text), message);
}

TEST(CharacteristicFile, IsALittleEndianHeaderAndThreeTables)
{
    const std::string bytes = characteristicFile(read(heading + allTables()));
    // 8 of magic and version, 12 of asymmetry and frequencies, three times 4 + 121 * 4
    ASSERT_EQ(bytes.size(), 1484u);
    using namespace std::string_literals;
    EXPECT_EQ(bytes.substr(0, 8), "MVil\x01\0\0\0"s);
    EXPECT_EQ(bytes.substr(8, 4), "\0\0\0\x3f"s);           // 0.5
    EXPECT_EQ(bytes.substr(16, 4), "\0\0\x80\x41"s);        // 16
    EXPECT_EQ(bytes.substr(20, 4), "\x0b\0\0\0"s);          // 11
    EXPECT_EQ(bytes.substr(24, 8), "\0\0\0\0\0\0\0\x3f"s);  // clipDrive: 0, 0.5
    EXPECT_EQ(bytes.substr(512, 4), "\0\0\xc8\x42"s);       // cubic: 100
    EXPECT_EQ(bytes.substr(1000, 4), "\0\0\x48\x43"s);      // resonance: 200
}
