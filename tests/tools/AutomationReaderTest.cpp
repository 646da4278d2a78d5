#include "render/AutomationReader.h"

#include "render/RenderError.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::vector<AutomationPoint> read(const std::string& text)
{
    std::istringstream stream(text);
    return readAutomation(stream, "moves.csv");
}

std::string messageFor(const std::string& text)
{
    try {
        read(text);
    } catch (const RenderError& error) {
        return error.what();
    }
    return "no error";
}

}  // namespace

TEST(AutomationReader, ReadsPlainAndQuotedFields)
{
    struct Row {
        const char* line;
        double seconds;
        const char* parameter;
        const char* value;
    };
    for (const auto& [line, seconds, parameter, value] : {
             Row{"1.5,Delay 1 Time,350 ms", 1.5, "Delay 1 Time", "350 ms"},
             Row{"  0 ,\tDry Level ,  -6 dB  \r", 0.0, "Dry Level", "-6 dB"},
             Row{"2e-3,\"Wet, Level\" , \"2,5\"", 0.002, "Wet, Level", "2,5"},
             Row{"+3,\"a \"\"b\"\"\",\" 1 \"", 3.0, "a \"b\"", " 1 "},
         }) {
        const auto points = read(line);
        ASSERT_EQ(points.size(), 1u) << line;
        EXPECT_EQ(points[0].seconds, seconds) << line;
        EXPECT_EQ(points[0].parameter, parameter) << line;
        EXPECT_EQ(points[0].value, value) << line;
    }
}

TEST(AutomationReader, SkipsHeadingCommentsAndEmptyLinesButCountsThem)
{
    const auto points =
        read("\xEF\xBB\xBF# moves\r\n\r\nSeconds,Parameter,Value\r\n1,A,2\r\n  # more\r\n0.5,B,3");
    ASSERT_EQ(points.size(), 2u);
    EXPECT_EQ(points[0].line, 4);
    EXPECT_EQ(points[1].line, 6);
    EXPECT_EQ(points[1].seconds, 0.5);
}

TEST(AutomationReader, NamesFileAndLineOfWhatDoesNotFit)
{
    struct Row {
        const char* text;
        const char* message;
    };
    for (const auto& [text, message] : {
             Row{"1,A,1\nx,A,1", "moves.csv, line 2: \"x\" is no time in seconds"},
             Row{"-1,A,1", "moves.csv, line 1: \"-1\" is no time in seconds"},
             Row{"nan,A,1", "moves.csv, line 1: \"nan\" is no time in seconds"},
             Row{"1 s,A,1", "moves.csv, line 1: \"1 s\" is no time in seconds"},
             Row{"1,A", "moves.csv, line 1: expected seconds, parameter and value, found 2 fields"},
             Row{"1", "moves.csv, line 1: expected seconds, parameter and value, found 1 field"},
             Row{"1,A,2,5", "moves.csv, line 1: expected seconds, parameter and value, found 4 fields"},
             Row{"1,,5", "moves.csv, line 1: no parameter"},
             Row{"1,A,", "moves.csv, line 1: no value"},
             Row{"#\n1,\"A,5", "moves.csv, line 2: a quoted field doesn't end where it should"},
             Row{"1,\"A\" B,5", "moves.csv, line 1: a quoted field doesn't end where it should"},
             // A heading is one only in the first line.
             Row{"1,A,5\nseconds,parameter,value", "moves.csv, line 2: \"seconds\" is no time in seconds"},
         })
        EXPECT_EQ(messageFor(text), message);
}
