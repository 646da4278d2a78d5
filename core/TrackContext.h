#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Where in the host's project an instance stands.
struct TrackContext {
    std::uint32_t color = 0;  // alpha, red, green, blue from the top byte down; 0 is none
    std::string trackName;
    std::vector<std::uint32_t> path;  // the place in each parent, from the project down to the plug-in
    int trackDepth = -1;              // in `path`, of the track; -1 if that isn't known
    std::string projectName;

    bool operator==(const TrackContext&) const = default;
};
