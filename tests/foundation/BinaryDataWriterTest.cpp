#include "foundation/BinaryDataWriter.h"

#include "foundation/BinaryFileReader.h"
#include "foundation/BinaryFileWriter.h"
#include "foundation/ErrorResult.h"
#include "foundation/OpenFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace std::string_literals;

TEST(BinaryDataWriter, WritesLittleEndianNumbersWithoutAlignment)
{
    std::ostringstream stream;
    BinaryDataWriter writer(stream);
    writer.writeMagic("MVxy", 258);
    writer.write("\xff", 1);
    writer.writeInt(-2);
    writer.writeFloat(1.5f);
    writer.writeUInt64(0x0102030405060708u);
    writer.writeString("ab\0c"s);
    writer.writeString("");
    EXPECT_TRUE(writer.good());
    EXPECT_EQ(stream.str(), "MVxy\x02\x01\x00\x00"
                            "\xff"
                            "\xfe\xff\xff\xff"
                            "\x00\x00\xc0\x3f"
                            "\x08\x07\x06\x05\x04\x03\x02\x01"
                            "\x04\x00\x00\x00"
                            "ab\0c"
                            "\x00\x00\x00\x00"s);
}

TEST(BinaryDataWriter, TellsOfAFullDevice)
{
    BinaryFileWriter writer("/dev/full");
    EXPECT_TRUE(writer.good());
    for (int i = 0; i < 100000; ++i)
        writer.writeInt(i);
    EXPECT_FALSE(writer.good());
}

TEST(BinaryFiles, ReadBackWhatWasWrittenAndFailOnWhatIsNoFile)
{
    const TemporaryFolder folder;
    folder.write("file", "longer than what replaces it");
    const std::string path = folder / "file";
    {
        BinaryFileWriter writer(path);
        writer.writeString("new");
    }
    EXPECT_EQ(folder.read("file"), "\x03\x00\x00\x00new"s);
    BinaryFileReader reader(path);
    std::string text;
    reader.readString(text);
    EXPECT_TRUE(reader.good());
    EXPECT_EQ(text, "new");
    for (const std::string& wrong :
         {std::string(folder / "missing"), std::string(folder / ""), path + "/below", std::string()}) {
        EXPECT_FALSE(BinaryFileReader(wrong).good()) << wrong;
        EXPECT_TRUE(openFile(wrong, std::ios_base::in)->fail()) << wrong;
    }
    EXPECT_FALSE(BinaryFileWriter(path + "/below").good());
}

TEST(ErrorResult, KeepsTheFirstFailureAlsoInACopy)
{
    ErrorResult result;
    EXPECT_TRUE(result.succeeded());
    result.reportError(-1, "first");
    result.reportError(-2, "second");
    const ErrorResult copy(result);
    EXPECT_FALSE(copy.succeeded());
    EXPECT_EQ(copy.code(), -1);
    EXPECT_EQ(copy.message(), "first");
}
