#include "presets/PresetMetadata.h"

#include "support/PresetFiles.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdint>

namespace {

/// 32 bits, low byte first.
std::string number(std::int32_t value)
{
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(static_cast<std::uint32_t>(value) >> shift & 0xFF);
    return bytes;
}

std::string text(const std::string& bytes)
{
    return number(static_cast<std::int32_t>(bytes.size())).append(bytes);
}

/// A preset of `count` values 1.0, which are 00 00 80 3F.
std::string binaryPreset(int count)
{
    std::string bytes = std::string("MStd").append(number(5)).append(number(count));
    for (int i = 0; i < count; ++i)
        bytes.append(number(0x3F800000));
    return bytes;
}

const std::string threeCustomValues = std::string("CuSV")
                                          .append(number(1))
                                          .append(number(4))
                                          .append(text("AUTHOR"))
                                          .append(text("Ada"))
                                          .append(text("DESCRIPTION"))
                                          .append(text("Two\nlines"))
                                          .append(text("OTHER"))
                                          .append(text(std::string("\0x", 2)))
                                          .append(text("TAGS"))
                                          .append(text("Dub,Long Echo,"));

struct File {
    explicit File(const std::string& content) : entry(putPreset(folder, "A.mvp", content)) {}
    std::string content() const { return folder.read("A.mvp"); }
    std::string message() { return writePresetMetadata(entry).message(); }

    TemporaryFolder folder;
    PresetInfo entry;
};

}  // namespace

TEST(PresetMetadata, SplitsTagsAtEachComma)
{
    using Tags = std::vector<std::string>;
    for (const auto& [joinedTags, tags] : {std::pair("", Tags{}),
                                           {"a", Tags{"a"}},
                                           {"a,", Tags{"a", ""}},
                                           {",", Tags{"", ""}},
                                           {" a , b", Tags{" a ", " b"}},
                                           {"a,b,c", Tags{"a", "b", "c"}},
                                           {",a", Tags{"", "a"}}}) {
        EXPECT_EQ(splitTags(joinedTags), tags) << joinedTags;
        EXPECT_EQ(joinTags(tags), joinedTags);
    }
}

TEST(PresetMetadata, IsReadFromBothForms)
{
    const std::string header =
        "[Preset]\nSignature=MStd\nVersion=5\nAuthor=Ada\nDescription=\"Two\\nlines\"\n"
        "Tags=Dub,Long Echo,\n\n[Parameters]\nWet Pan=0\n\n[Settings]\nAuthor=Nobody\n";
    for (const std::string& content : {binaryPreset(705) + threeCustomValues,
                                       binaryPreset(0) + threeCustomValues, header, "; by hand\n" + header}) {
        File file(content);
        file.entry.tags = {"old"};
        EXPECT_TRUE(readPresetMetadata(file.entry.path, file.entry));
        EXPECT_EQ(file.entry.author, "Ada");
        EXPECT_EQ(file.entry.description, "Two\nlines");
        EXPECT_EQ(file.entry.tags, (std::vector<std::string>{"Dub", "Long Echo", ""}));
    }
}

TEST(PresetMetadata, IsEmptyWhereAPresetHasNone)
{
    struct Row {
        std::string content;
        bool isPreset;
    };
    for (const auto& [content, isPreset] :
         {Row{binaryPreset(705), true}, Row{binaryPreset(705).substr(0, 400), true},
          Row{binaryPreset(2) + "CuSW", true}, Row{"MStd" + number(5) + number(-1), false},
          Row{"MStd" + number(5), false}, Row{"MStd", false}, Row{"", false},
          Row{"[Other]\nAuthor=Ada\n", false}, Row{"no preset at all", false}, Row{"[Preset]\n", true}}) {
        File file(content);
        file.entry.author = "old";
        EXPECT_EQ(readPresetMetadata(file.entry.path, file.entry), isPreset) << content;
        EXPECT_TRUE(file.entry.author.empty() && file.entry.description.empty() && file.entry.tags.empty());
    }
    PresetInfo missing("/nowhere/A.mvp");
    EXPECT_FALSE(readPresetMetadata(missing.path, missing));
}

TEST(PresetMetadata, SurvivesDamageAnywhere)
{
    const std::string whole = binaryPreset(3) + threeCustomValues;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        File file(whole.substr(0, length));
        readPresetMetadata(file.entry.path, file.entry);
        EXPECT_TRUE(file.entry.author.empty() || file.entry.author == "Ada");
        // Three values and nothing behind them are a whole file; all other pieces stay as they are.
        EXPECT_EQ(file.message().empty(), length == 24) << length;
        if (length != 24) {
            EXPECT_EQ(file.content(), whole.substr(0, length));
        }
    }
    for (std::size_t place = 0; place < whole.size(); ++place) {
        for (const char byte : {'\x7F', '\xFF'}) {
            std::string damaged = whole;
            damaged[place] = byte;
            File file(damaged);
            readPresetMetadata(file.entry.path, file.entry);
            file.message();
        }
    }
}

TEST(PresetMetadata, IsWrittenIntoABinaryFile)
{
    const std::string block = std::string("CuSV").append(number(1)).append(number(3)).append(
        text("AUTHOR") + text("Bo") + text("DESCRIPTION") + text("") + text("TAGS") + text("x,y"));
    File file(binaryPreset(705));
    file.entry.author = "Bo";
    file.entry.tags = {"x", "y"};
    EXPECT_EQ(file.message(), "");
    EXPECT_EQ(file.content(), binaryPreset(705) + block);
    struct stat status {};
    ASSERT_EQ(stat(file.entry.path.c_str(), &status), 0);
    EXPECT_EQ(file.entry.modificationTime, static_cast<std::uint64_t>(status.st_mtime));

    File other(binaryPreset(2) + threeCustomValues);
    other.entry.author = "Bo";
    EXPECT_EQ(other.message(), "");
    EXPECT_EQ(other.content(), binaryPreset(2) + "CuSV" + number(1) + number(4) + text("AUTHOR") +
                                   text("Bo") + text("DESCRIPTION") + text("") + text("OTHER") +
                                   text(std::string("\0x", 2)) + text("TAGS") + text(""));
}

TEST(PresetMetadata, IsWrittenIntoATextLineByLine)
{
    struct Row {
        const char* before;
        const char* after;
    };
    for (const auto& [before, after] : {
             Row{"[Preset]\nSignature=MStd\nVersion=5\n\n[Parameters]\nTags=0\nA = 1 \n",
                 "[Preset]\nSignature=MStd\nVersion=5\nAuthor=Bo\nTags=\" x,y\"\n\n[Parameters]\nTags=0\nA = "
                 "1 \n"},
             Row{"; mine\n\n[Preset]\n Tags = old\nName=Old\nVersion=5\nDescription=gone\n; "
                 "kept\nAuthor=A\nAuthor=B\n",
                 "; mine\n\n[Preset]\nTags=\" x,y\"\nName=A\nVersion=5\n; kept\nAuthor=Bo\n"},
             Row{"[Preset]\r\nVersion=5\r\n\r\n[Parameters]\r\n",
                 "[Preset]\r\nVersion=5\r\nAuthor=Bo\r\nTags=\" x,y\"\r\n\r\n[Parameters]\r\n"},
             Row{"[Preset]", "[Preset]\nAuthor=Bo\nTags=\" x,y\"\n"},
         }) {
        File file(before);
        file.entry.author = "Bo";
        file.entry.tags = {" x", "y"};
        EXPECT_EQ(file.message(), "");
        EXPECT_EQ(file.content(), after);
        readPresetMetadata(file.entry.path, file.entry);
        EXPECT_EQ(file.entry.tags, (std::vector<std::string>{" x", "y"}));
    }
}

TEST(PresetMetadata, LeavesWhatItCantRewriteAndSaysWhy)
{
    const std::string most = binaryPreset(10000);
    File largest(most);
    EXPECT_EQ(largest.message(), "");
    for (const auto& [content, message] :
         {std::pair(binaryPreset(10001), "Invalid file format."),
          {binaryPreset(2) + "junk", "Invalid file format."},
          {binaryPreset(2) + threeCustomValues + "x", "Invalid file format."},
          {binaryPreset(2) + "CuSV" + number(2) + number(0), "Invalid file format."},
          {std::string("[Other]\nA=1\n"), "Invalid file format."},
          {std::string("MSt"), "Incorrect file permissions or corrupt preset file."}}) {
        File file(content);
        EXPECT_EQ(file.message(), message);
        EXPECT_EQ(file.content(), content);
        EXPECT_EQ(file.folder.entryCount(), 1);
    }
    PresetInfo missing("/nowhere/A.mvp");
    EXPECT_EQ(writePresetMetadata(missing).message(), "Incorrect file permissions or corrupt preset file.");
}
