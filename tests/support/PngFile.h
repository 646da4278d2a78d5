#pragma once

#include "gui/ICanvas.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// A PNG file made by hand, of whatever is asked for, right or wrong.
struct PngFile {
    std::uint32_t width = 1;
    std::uint32_t height = 1;
    std::uint8_t depth = 8;
    std::uint8_t colourType = 6;
    std::uint8_t compression = 0;
    std::uint8_t filterMethod = 0;
    std::uint8_t interlace = 0;
    std::vector<std::uint8_t> channels;                    // rows from the top, R, G, B and, in type 6, A
    std::vector<std::uint8_t> filters{0};                  // of the rows, in turn
    std::uint32_t gamma = 45455;                           // 100000 times; 0 for no chunk
    std::size_t pieceSize = ~static_cast<std::size_t>(0);  // of the IDAT chunks

    std::string Bytes() const;
};

std::string PngChunk(const std::string& type, const std::string& data);
/// The picture as an 8-bit RGBA file that is read back without a change of tones at display gamma 1.
std::string PngOf(const gui::IBitmap& bitmap);
