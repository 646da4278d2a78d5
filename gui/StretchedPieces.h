#pragma once

#include "gui/ICanvas.h"

#include <vector>

namespace gui {

/// A run of pixels along one axis that is copied as it is, logical units.
struct StretchedPiece {
    float destination;
    float source;
    float length;
};

/// An interval along one axis, logical units.
struct Extent {
    float start;
    float length;
};

/// How a picture's extent comes to cover a destination: its ends stay as they are and its middle is tiled.
/// Pieces follow each other without gaps on device pixels.
/// @param limit   the whole picture's length, which no end exceeds
/// @param corner  the least length of an end
std::vector<StretchedPiece> StretchedPieces(Extent destination, Extent source, float limit, float corner,
                                            const IDeviceBacking& backing);

/// The two halves of a picture's extent, each stretched over its half of the destination.
std::vector<StretchedPiece> StretchedHalves(Extent destination, Extent source, float limit,
                                            const IDeviceBacking& backing);

/// Where in the picture a point of the destination comes from; outside of all pieces -1.
float SourceOf(const std::vector<StretchedPiece>& pieces, float destination);

}  // namespace gui
