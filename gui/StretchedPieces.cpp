#include "gui/StretchedPieces.h"

#include <algorithm>
#include <cmath>

namespace gui {

namespace {

float WholePixelsBelow(float length, float scale)
{
    // The tolerance keeps 10 pixels from being cut to 9 when they come out as 9.9999.
    return std::floor(length * scale + geometryTolerance) / scale;
}

float CapLength(Extent destination, Extent source, float limit, float corner, float scale)
{
    const float cap = std::max(std::min(source.length / 3.0f, limit), corner);
    return WholePixelsBelow(std::min(cap, destination.length / 2.0f), scale);
}

}  // namespace

std::vector<StretchedPiece> StretchedPieces(Extent destination, Extent source, float limit, float corner,
                                            const IDeviceBacking& backing)
{
    if (IsSameEdge(destination.length, source.length))
        return {{destination.start, source.start, destination.length}};

    const float scale = backing.Scale();
    const float pixel = 1.0f / scale;
    const float start = backing.Snap(destination.start);
    const float end = backing.Snap(destination.start + destination.length);
    const float sourceStart = backing.Snap(source.start);
    const float sourceEnd = backing.Snap(source.start + source.length);
    const float cap = CapLength({start, end - start}, source, limit, corner, scale);

    std::vector<StretchedPiece> pieces{{start, sourceStart, cap}};
    // Ends that leave no middle share the one pixel between them.
    const float middle = std::max(sourceEnd - sourceStart - 2.0f * cap, pixel);
    const float middleStart = std::min(sourceStart + cap, sourceEnd - pixel);
    // Counted rather than summed: the sum of many steps drifts off the pixels.
    for (int tile = 0;; ++tile) {
        const float at = start + cap + static_cast<float>(tile) * middle;
        if (at > end - cap - 0.5f * pixel)
            break;
        pieces.push_back({at, middleStart, std::min(middle, end - cap - at)});
    }
    pieces.push_back({end - cap, sourceEnd - cap, cap});
    return pieces;
}

std::vector<StretchedPiece> StretchedHalves(Extent destination, Extent source, float limit,
                                            const IDeviceBacking& backing)
{
    const float half = backing.Snap(destination.length / 2.0f);
    const float sourceHalf = backing.Snap(source.length / 2.0f);
    auto pieces =
        StretchedPieces({destination.start, half}, {source.start, sourceHalf}, limit, 0.0f, backing);
    const auto second =
        StretchedPieces({destination.start + half, destination.length - half},
                        {source.start + sourceHalf, source.length - sourceHalf}, limit, 0.0f, backing);
    pieces.insert(pieces.end(), second.begin(), second.end());
    return pieces;
}

float SourceOf(const std::vector<StretchedPiece>& pieces, float destination)
{
    for (const StretchedPiece& piece : pieces) {
        if (destination >= piece.destination && destination < piece.destination + piece.length)
            return piece.source + destination - piece.destination;
    }
    return -1.0f;
}

}  // namespace gui
