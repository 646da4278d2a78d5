#include "foundation/BinaryDataReader.h"
#include "foundation/BinaryResourceReader.h"
#include "foundation/Resources.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace std::string_literals;

struct Bytes {
    explicit Bytes(const std::string& bytes) : stream(bytes) {}

    std::istringstream stream;
    BinaryDataReader reader{stream};
};

}  // namespace

TEST(BinaryDataReader, ReadsLittleEndianNumbersWithoutAlignment)
{
    // 1.5 is 0x3fc00000.
    Bytes bytes("\xff"
                "\xfe\xff\xff\xff"
                "\x00\x00\xc0\x3f"
                "\x08\x07\x06\x05\x04\x03\x02\x01"s);
    char first = 0;
    bytes.reader.read(&first, 1);
    EXPECT_EQ(first, '\xff');
    EXPECT_EQ(bytes.reader.readInt(), -2);
    EXPECT_EQ(bytes.reader.readFloat(), 1.5f);
    EXPECT_EQ(bytes.reader.readUInt64(), 0x0102030405060708u);
    EXPECT_TRUE(bytes.reader.good());
}

TEST(BinaryDataReader, AShortReadFailsAndCountsAsZero)
{
    Bytes bytes("\x01\x02\x03"s);
    unsigned char buffer[5] = {9, 9, 9, 9, 9};
    bytes.reader.read(buffer, sizeof(buffer));
    EXPECT_EQ(buffer[2], 3);
    EXPECT_EQ(buffer[3], 0);
    EXPECT_EQ(buffer[4], 0);
    EXPECT_FALSE(bytes.reader.good());
    EXPECT_EQ(bytes.reader.readInt(), 0);
}

TEST(BinaryDataReader, AHeaderIsFourCharactersAndAVersion)
{
    struct Row {
        std::string bytes;
        bool matches;
        int version;
    };
    for (const auto& [bytes, matches, version] : {
             Row{"MVil\x07\x00\x00\x00"s, true, 7},
             Row{"MVIL\x07\x00\x00\x00"s, false, 7},
             Row{"MVil\x07\x00"s, false, 7},  // what is missing counts as 0
             Row{"MVi"s, false, 0},
         }) {
        Bytes header(bytes);
        EXPECT_EQ(header.reader.version(), -1);
        EXPECT_EQ(header.reader.readMagic("MVil"), matches) << bytes;
        EXPECT_EQ(header.reader.version(), version) << bytes;
    }
}

TEST(BinaryDataReader, StandsBehindAHeaderThatDoesNotMatch)
{
    Bytes bytes("RIFF\x01\x00\x00\x00\x2a\x00\x00\x00"s);
    EXPECT_FALSE(bytes.reader.readMagic("MVil"));
    EXPECT_EQ(bytes.reader.readInt(), 42);
    EXPECT_TRUE(bytes.reader.good());
}

TEST(BinaryDataReader, ATextIsItsLengthAndItsBytes)
{
    struct Row {
        std::string bytes;
        std::string text;
        bool good;
    };
    for (const auto& [bytes, text, good] : {
             Row{"\x03\x00\x00\x00"
                 "a\0b"s,
                 "a\0b"s, true},
             Row{"\x00\x00\x00\x00"s, "", true}, Row{"\xff\xff\xff\xff"s, "", true},  // a length of -1
             Row{"\xff\xff\xff\x7f"s + "a", "", false},                               // claims 2 GiB
         }) {
        Bytes source(bytes);
        std::string read = "before";
        source.reader.readString(read);
        EXPECT_EQ(read, text);
        EXPECT_EQ(source.reader.good(), good) << text;
    }
}

TEST(Resources, AreFoundByTheirStemInAnyCase)
{
    for (const char* name : {"PRIME", "prime.fil", "Prime", "Prime.other"}) {
        EXPECT_TRUE(resourceExists(name)) << name;
        EXPECT_EQ(findResource(name).data(), findResource("PRIME").data()) << name;
    }
    for (const char* name : {"", "Prim", "Primer", "x/Prime"}) {
        EXPECT_FALSE(resourceExists(name)) << name;
        EXPECT_TRUE(findResource(name).empty()) << name;
    }
}

TEST(Resources, AMissingOneIsAnErrorWhenOpened)
{
    try {
        openResource("Nothing.fil");
        FAIL() << "no error";
    } catch (const EResource& error) {
        EXPECT_STREQ(error.what(), "Resource not found");
    }
    EXPECT_THROW(BinaryResourceReader("Nothing.fil"), EResource);
}

TEST(Resources, AnOpenOneCanBeReadTwiceFromItsStart)
{
    const auto stream = openResource("Prime.fil");
    BinaryDataReader reader(*stream);
    EXPECT_TRUE(reader.readMagic("MVil"));
    stream->seekg(0);
    EXPECT_TRUE(reader.readMagic("MVil"));
    EXPECT_TRUE(BinaryResourceReader("Prime.fil").readMagic("MVil"));
}
