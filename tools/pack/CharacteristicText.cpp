#include "pack/CharacteristicText.h"

#include "pack/PackError.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t size = CharacteristicTables::size;
using Words = std::vector<std::string_view>;

std::string inQuotes(std::string_view text) { return std::string("\"").append(text).append("\""); }

/// The words of a line in front of any comment.
Words wordsOf(std::string_view line)
{
    constexpr std::string_view blanks = " \t\r";
    line = line.substr(0, line.find('#'));
    Words words;
    for (auto start = line.find_first_not_of(blanks); start != std::string_view::npos;
         start = line.find_first_not_of(blanks)) {
        line.remove_prefix(start);
        const auto length = std::min(line.find_first_of(blanks), line.size());
        words.push_back(line.substr(0, length));
        line.remove_prefix(length);
    }
    return words;
}

/// Nothing for what isn't wholly a finite number. The decimal sign is always the point.
std::optional<float> numberOf(std::string_view word)
{
    float number = 0.0f;
    const char* end = word.data() + word.size();
    const auto result = std::from_chars(word.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(number))
        return std::nullopt;
    return number;
}

/// The label of a row: "0.0:" to "1.0:".
std::string rowLabel(std::size_t row)
{
    return row < 10 ? std::string("0.").append(std::to_string(row)).append(":") : "1.0:";
}

class Parser {
public:
    explicit Parser(const std::string& name) : fileName(name) {}

    void readLine(const std::string& line)
    {
        ++lineNumber;
        const Words words = wordsOf(line);
        if (words.empty())
            return;
        if (words[0].ends_with(':'))
            readRow(words);
        else if (words[0] == "asymmetry")
            readAsymmetry(words);
        else if (words[0] == "frequencies")
            readFrequencies(words);
        else
            beginTable(words);
    }

    CharacteristicTables finish() const
    {
        expectFullTable();
        if (!(tables.asymmetry > 0.0f))
            fail("no asymmetry");
        if (!(tables.minimumFrequency < tables.maximumFrequency))
            fail("no frequencies");
        for (const Section& section : sections) {
            if (section.rows == 0)
                fail("no table " + std::string(section.name));
        }
        return tables;
    }

private:
    struct Section {
        std::string_view name;
        CharacteristicTables::Table* table;
        std::size_t rows = 0;  // read so far
    };

    [[noreturn]] void fail(const std::string& trouble) const
    {
        throw PackError(fileName + ":" + std::to_string(lineNumber) + ": " + trouble);
    }

    std::vector<float> numbersBehind(const Words& words, std::size_t expected) const
    {
        if (words.size() != expected + 1)
            fail(inQuotes(words[0]) + " needs " + std::to_string(expected) + " numbers, found " +
                 std::to_string(words.size() - 1));
        std::vector<float> numbers;
        for (const std::string_view word : std::span(words).subspan(1)) {
            const std::optional<float> number = numberOf(word);
            if (!number)
                fail(inQuotes(word) + " is no number");
            numbers.push_back(*number);
        }
        return numbers;
    }

    void readAsymmetry(const Words& words)
    {
        tables.asymmetry = numbersBehind(words, 1)[0];
        if (!(tables.asymmetry > 0.0f))
            fail("the asymmetry must lie above 0");
    }

    void readFrequencies(const Words& words)
    {
        const std::vector<float> numbers = numbersBehind(words, 2);
        if (!(numbers[0] < numbers[1]))
            fail("the frequencies must rise");
        tables.minimumFrequency = numbers[0];
        tables.maximumFrequency = numbers[1];
    }

    void beginTable(const Words& words)
    {
        expectFullTable();
        const auto named = std::find_if(sections.begin(), sections.end(),
                                        [&](const Section& section) { return section.name == words[0]; });
        if (named == sections.end())
            fail(inQuotes(words[0]) + " is neither asymmetry, frequencies, clipDrive, cubic nor resonance");
        if (words.size() > 1)
            fail("the rows of " + inQuotes(words[0]) + " begin on the next line");
        if (named->rows > 0)
            fail("a second table " + std::string(named->name));
        current = &*named;
    }

    void readRow(const Words& words)
    {
        if (!current || current->rows == size)
            fail("the row " + inQuotes(words[0]) + " belongs to no table");
        if (words[0] != rowLabel(current->rows))
            fail("expected the row " + inQuotes(rowLabel(current->rows)) + ", found " + inQuotes(words[0]));
        const std::vector<float> numbers = numbersBehind(words, size);
        if (std::any_of(numbers.begin(), numbers.end(), [](float number) { return number < 0.0f; }))
            fail("a number below 0");
        std::copy(numbers.begin(), numbers.end(),
                  current->table->begin() + static_cast<std::ptrdiff_t>(current->rows * size));
        ++current->rows;
    }

    void expectFullTable() const
    {
        if (current && current->rows < size)
            fail(std::string(current->name) + " ends before the row " + inQuotes(rowLabel(current->rows)));
    }

    const std::string& fileName;
    int lineNumber = 0;
    CharacteristicTables tables;
    std::array<Section, 3> sections{
        {{"clipDrive", &tables.clipDrive}, {"cubic", &tables.cubic}, {"resonance", &tables.resonance}}};
    Section* current = nullptr;
};

}  // namespace

CharacteristicTables readCharacteristicText(std::istream& text, const std::string& fileName)
{
    Parser parser(fileName);
    std::string line;
    while (std::getline(text, line))
        parser.readLine(line);
    return parser.finish();
}
