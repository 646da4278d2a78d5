#include "presets/SectionTextReader.h"
#include "presets/SectionTextWriter.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

/// All that a text holds, as "[section] key=value ...", and how it ends.
std::string allOf(const std::string& text)
{
    std::istringstream stream(text);
    SectionTextReader reader(stream);
    std::string all;
    while (reader.nextSection()) {
        all.append("[").append(reader.section()).append("]");
        while (reader.nextKey())
            all.append(reader.key()).append("=<").append(reader.value()).append(">");
    }
    return all.append(reader.hasSyntaxError() ? " error" : " end");
}

TEST(SectionText, ReadsSectionsAndKeys)
{
    struct Row {
        const char* text;
        const char* all;
    };
    const Row rows[] = {
        {"", " end"},
        {"; nothing\n\n", " end"},
        {"[A]\nk=v\n", "[A]k=<v> end"},
        {"[A]\nk=v", "[A]k=<v> end"},  // no line end
        {"\xEF\xBB\xBF[A]\r\nk=v\r\n", "[A]k=<v> end"},
        {"; c\n  [A]\n  ;x=1\n  k \t=v\n\n[B]\n[A]\nk=w\n", "[A]k=<v>[B][A]k=<w> end"},
        {"[]\nk=\n", "[]k=<> end"},
        {"[A]\nk= a b \nl=a=b;c[d]\n", "[A]k=<a b>l=<a=b;c[d]> end"},
        {"[A]\nk=\" a \"\n", "[A]k=< a > end"},
        {"[A]\nk=\"\"\n", "[A]k=<> end"},
        {R"([A]
k="q\"b\\n\tz")",
         R"([A]k=<q"b\n\tz> end)"},  // the backslash before t stands for itself
        {"[A]\nk=\"a\\nb\\rc\"\n", "[A]k=<a\nb\rc> end"},
        {"[A]\nk=a\"b\\n\n", "[A]k=<a\"b\\n> end"},  // escapes count in quotes only
        {"k=v\n[A]\n", " error"},
        {"[A\nk=v\n", " error"},
        {"[A]\nk=v\n[B\n", "[A]k=<v> error"},
        {"[A]x\n", " error"},
        {"[A]\nkey\n[B]\n", "[A] error"},
        {"[A]\n =v\n", "[A] error"},
        {"[A]\nk=\"v\n", "[A] error"},
        {"[A]\nk=\"v\\\"\n", "[A] error"},
        {"[A]\nk=\"v\\", "[A] error"},
        {"[A]\nk=\"v\"w\n", "[A] error"},
    };
    for (const auto& [text, all] : rows)
        EXPECT_EQ(allOf(text), all) << text;
}

TEST(SectionText, SkipsASectionKeyByKey)
{
    std::istringstream stream("[A]\na=1\nb=2\n[B]\nc=3\n[C]\n");
    SectionTextReader reader(stream);
    ASSERT_TRUE(reader.nextSection());
    ASSERT_TRUE(reader.nextKey());
    ASSERT_TRUE(reader.nextSection());
    EXPECT_EQ(reader.section(), "B");
    ASSERT_TRUE(reader.nextSection());
    EXPECT_EQ(reader.section(), "C");
    EXPECT_FALSE(reader.nextKey());
    EXPECT_FALSE(reader.nextSection());
    EXPECT_FALSE(reader.nextSection());
    std::istringstream broken("[A]\na=1\nb\n[B]\n");
    SectionTextReader brokenReader(broken);
    ASSERT_TRUE(brokenReader.nextSection());
    EXPECT_FALSE(brokenReader.nextSection());
    EXPECT_TRUE(brokenReader.hasSyntaxError());
    EXPECT_FALSE(brokenReader.nextKey());
}

TEST(SectionText, WritesExactly)
{
    std::ostringstream stream;
    SectionTextWriter writer(stream);
    writer.writeSection("Preset");
    writer.writeKey("Version", -12345);
    writer.writeKey("Name", "plain; [a]=b");
    writer.writeKey("Empty", "");
    writer.writeSection("More");
    writer.writeKey("Quoted", "a\n\r\"\\");
    writer.writeKey("Front", " a");
    writer.writeKey("Back", "a\t");
    EXPECT_TRUE(writer.good());
    EXPECT_EQ(stream.str(), "[Preset]\nVersion=-12345\nName=plain; [a]=b\nEmpty=\n\n"
                            "[More]\nQuoted=\"a\\n\\r\\\"\\\\\"\nFront=\" a\"\nBack=\"a\t\"\n");
}

TEST(SectionText, AnyValueSurvives)
{
    const char characters[] = {' ', '\t', '\n', '\r', '"', '\\', 'n', ';', '[', '=', '\xE4', '\0'};
    std::string value;
    unsigned state = 1;
    for (int round = 0; round < 2000; ++round) {
        value.clear();
        for (int length = round % 7; length > 0; --length) {
            state = state * 1103515245u + 12345u;
            value += characters[(state >> 16) % sizeof(characters)];
        }
        std::stringstream stream;
        SectionTextWriter writer(stream);
        writer.writeSection("S");
        writer.writeKey("k", value);
        writer.writeKey("l", "x");
        SectionTextReader reader(stream);
        ASSERT_TRUE(reader.nextSection());
        ASSERT_TRUE(reader.nextKey());
        ASSERT_EQ(reader.value(), value);
        ASSERT_TRUE(reader.nextKey());
        ASSERT_EQ(reader.key(), "l");
    }
}

TEST(SectionText, RefusesWhatWouldNotReadBack)
{
    for (const char* key : {"", "a=b", "[a", ";a", " a", "a\t", "a\nb", "a\r"}) {
        std::ostringstream stream;
        SectionTextWriter writer(stream);
        writer.writeKey(key, "v");
        EXPECT_FALSE(writer.good()) << key;
    }
    std::ostringstream stream;
    SectionTextWriter writer(stream);
    writer.writeSection("a]b");
    EXPECT_FALSE(writer.good());
}

}  // namespace
