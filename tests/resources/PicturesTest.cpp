#include "resources/ResourceTable.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string textOf(const std::filesystem::path& path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

/// The source of one picture.
struct Drawing {
    std::string name;
    std::string text;
    int width = 0;  // logical units
    int height = 0;
};

Drawing readDrawing(const std::filesystem::path& path)
{
    static const std::regex head(R"re(<svg [^>]*width="(\d+)" height="(\d+)" viewBox="0 0 (\d+) (\d+)")re");
    Drawing drawing{path.stem().string(), textOf(path)};
    std::smatch match;
    if (std::regex_search(drawing.text, match, head) && match[1] == match[3] && match[2] == match[4]) {
        drawing.width = std::stoi(match[1]);
        drawing.height = std::stoi(match[2]);
    }
    return drawing;
}

const std::vector<Drawing>& drawings()
{
    static const std::vector<Drawing> all = [] {
        std::vector<Drawing> found;
        for (const auto& entry : std::filesystem::directory_iterator(SORDELIN_PICTURES)) {
            if (entry.path().extension() == ".svg") {
                found.push_back(readDrawing(entry.path()));
            }
        }
        return found;
    }();
    return all;
}

std::string carriedName(const std::string& name)
{
    std::string capitals = name + "_2X";
    std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                   [](unsigned char c) { return std::toupper(c); });
    return capitals;
}

std::span<const std::byte> carried(const std::string& name)
{
    for (const CarriedResource& resource : carriedResources()) {
        if (resource.name == name) {
            return resource.bytes;
        }
    }
    return {};
}

std::uint32_t bigEndian(std::span<const std::byte> bytes)
{
    return std::to_integer<std::uint32_t>(bytes[0]) << 24 | std::to_integer<std::uint32_t>(bytes[1]) << 16 |
           std::to_integer<std::uint32_t>(bytes[2]) << 8 | std::to_integer<std::uint32_t>(bytes[3]);
}

struct Chunk {
    std::string type;
    std::span<const std::byte> data;
};

/// The chunks of a PNG; none if the bytes aren't one from end to end.
std::vector<Chunk> chunksOf(std::span<const std::byte> png)
{
    constexpr std::size_t signatureSize = 8;
    constexpr std::size_t frameSize = 12;  // length, type and checksum of a chunk
    if (png.size() < signatureSize || std::memcmp(png.data(), "\x89PNG\r\n\x1a\n", signatureSize) != 0) {
        return {};
    }
    std::vector<Chunk> chunks;
    auto rest = png.subspan(signatureSize);
    while (rest.size() >= frameSize && rest.size() - frameSize >= bigEndian(rest)) {
        const std::size_t length = bigEndian(rest);
        const auto* type = reinterpret_cast<const char*>(rest.data() + 4);
        chunks.push_back({std::string(type, 4), rest.subspan(8, length)});
        rest = rest.subspan(frameSize + length);
    }
    return rest.empty() ? chunks : std::vector<Chunk>();
}

/// A picture as the library that drew it reads it back.
class Pixels {
public:
    explicit Pixels(std::span<const std::byte> png)
        : rest(png),
          surface(cairo_image_surface_create_from_png_stream(&Pixels::read, this), &cairo_surface_destroy)
    {}
    int width() const { return cairo_image_surface_get_width(surface.get()); }
    int height() const { return cairo_image_surface_get_height(surface.get()); }
    std::uint32_t at(int x, int y) const
    {
        std::uint32_t pixel;
        const auto row = static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface.get());
        std::memcpy(&pixel, cairo_image_surface_get_data(surface.get()) + row + x * 4, sizeof pixel);
        return pixel;
    }

private:
    static cairo_status_t read(void* self, unsigned char* data, unsigned length)
    {
        auto& rest = static_cast<Pixels*>(self)->rest;
        if (rest.size() < length) {
            return CAIRO_STATUS_READ_ERROR;
        }
        std::memcpy(data, rest.data(), length);
        rest = rest.subspan(length);
        return CAIRO_STATUS_SUCCESS;
    }
    std::span<const std::byte> rest;
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface;
};

}  // namespace

TEST(Pictures, EachIsCarriedAtTwiceItsSizeInTheOneFlavourThatIsRead)
{
    ASSERT_FALSE(drawings().empty());
    for (const Drawing& drawing : drawings()) {
        SCOPED_TRACE(drawing.name);
        EXPECT_GT(drawing.width, 0) << "the size has to be whole units, and the view box the same";
        const auto chunks = chunksOf(carried(carriedName(drawing.name)));
        ASSERT_FALSE(chunks.empty());
        ASSERT_EQ(chunks.front().type, "IHDR");
        const auto header = chunks.front().data;
        EXPECT_EQ(bigEndian(header), static_cast<std::uint32_t>(2 * drawing.width));
        EXPECT_EQ(bigEndian(header.subspan(4)), static_cast<std::uint32_t>(2 * drawing.height));
        EXPECT_EQ(header[8], std::byte{8}) << "bits";
        EXPECT_TRUE(header[9] == std::byte{2} || header[9] == std::byte{6}) << "truecolour";
        EXPECT_EQ(header[12], std::byte{0}) << "interlace";
        for (const Chunk& chunk : chunks) {
            EXPECT_NE(chunk.type, "gAMA") << "all are to be shown with one gamma";
        }
    }
}

// Resources are looked up in capitals, whatever the case in which they are asked for.
TEST(Pictures, NamesDifferInMoreThanTheCaseOfTheirLetters)
{
    std::set<std::string> names;
    for (const Drawing& drawing : drawings()) {
        EXPECT_TRUE(names.insert(carriedName(drawing.name)).second) << drawing.name;
    }
}

// Two looks are faded into one another pixel by pixel, and a knob's pointer lies on its back.
TEST(Pictures, LooksOfOneControlHaveOneSize)
{
    static const std::regex look("((Back|Overlay)?(Normal|Active|Down|Rotate|On|Off))$");
    std::map<std::string, const Drawing*> controls;
    for (const Drawing& drawing : drawings()) {
        const auto control = controls.try_emplace(std::regex_replace(drawing.name, look, ""), &drawing).first;
        EXPECT_EQ(control->second->width, drawing.width) << drawing.name << " and " << control->second->name;
        EXPECT_EQ(control->second->height, drawing.height)
            << drawing.name << " and " << control->second->name;
    }
}

// A stretched picture keeps thirds at its ends, and its middle third is tiled: any change along it would be a
// seam.
TEST(Pictures, StretchedOnesAreUniformInTheirMiddle)
{
    int found = 0;
    for (const Drawing& drawing : drawings()) {
        const bool isBoth = drawing.text.find(R"(data-stretch="both")") != std::string::npos;
        if (!isBoth && drawing.text.find(R"(data-stretch="x")") == std::string::npos) {
            continue;
        }
        ++found;
        const Pixels pixels(carried(carriedName(drawing.name)));
        const auto sameColumns = [&pixels](int left, int right) {
            for (int y = 0; y < pixels.height(); ++y) {
                if (pixels.at(left, y) != pixels.at(right, y)) {
                    return false;
                }
            }
            return true;
        };
        const auto sameRows = [&pixels](int upper, int lower) {
            for (int x = 0; x < pixels.width(); ++x) {
                if (pixels.at(x, upper) != pixels.at(x, lower)) {
                    return false;
                }
            }
            return true;
        };
        for (int x = pixels.width() / 3; x < pixels.width() * 2 / 3; ++x) {
            EXPECT_TRUE(sameColumns(pixels.width() / 3, x)) << drawing.name << ", column " << x;
        }
        for (int y = pixels.height() / 3; isBoth && y < pixels.height() * 2 / 3; ++y) {
            EXPECT_TRUE(sameRows(pixels.height() / 3, y)) << drawing.name << ", row " << y;
        }
    }
    EXPECT_GT(found, 0);
}

TEST(Pictures, ColoursAreThoseOfThePalette)
{
    static const std::regex colour("#[0-9A-Fa-f]{6}");
    const std::string palette = textOf(std::filesystem::path(SORDELIN_PICTURES) / "README.md");
    for (const Drawing& drawing : drawings()) {
        const auto begin = std::sregex_iterator(drawing.text.begin(), drawing.text.end(), colour);
        for (auto match = begin; match != std::sregex_iterator(); ++match) {
            EXPECT_NE(palette.find(match->str()), std::string::npos) << drawing.name << ": " << match->str();
        }
    }
}
