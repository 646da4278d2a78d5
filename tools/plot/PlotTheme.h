#pragma once

#include "plot/PlotCanvas.h"

/// The colours and sizes that all parts of the picture share.
namespace plotTheme {

inline constexpr PlotColour paper = PlotColour::fromHex(0xf4efe6);
inline constexpr PlotColour panel = PlotColour::fromHex(0xfcf9f3);
inline constexpr PlotColour panelEdge = PlotColour::fromHex(0xcfc4b2);
inline constexpr PlotColour ink = PlotColour::fromHex(0x2a211b);
inline constexpr PlotColour softInk = PlotColour::fromHex(0x7a6c5d);
inline constexpr PlotColour grid = PlotColour::fromHex(0x8a7a66, 0.22);
inline constexpr PlotColour beat = PlotColour::fromHex(0xa8442a);
inline constexpr PlotColour tailEdge = PlotColour::fromHex(0x9a6a2c, 0.85);

inline constexpr double labelSize = 10.0;
inline constexpr double captionSize = 12.0;
inline constexpr double labelGap = 8.0;  // between a panel and its labels

}  // namespace plotTheme
