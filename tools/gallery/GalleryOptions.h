#pragma once

#include <filesystem>
#include <optional>
#include <ostream>

namespace gallery {

/// What the command line asks for. Paths are empty where nothing was said.
struct GalleryOptions {
    int page = 0;
    float scale = 1.0f;  // one of gui::DeviceBacking's levels
    bool scaleIsGiven = false;
    std::filesystem::path png;     // one page,
    std::filesystem::path folder;  // or all of them
    std::filesystem::path script;
    bool offscreen = false;  // a script without a window
};

/// Nothing if the command line was answered on `out`, as with --help and --list. Throws GalleryError.
std::optional<GalleryOptions> ParseGalleryOptions(int argumentCount, const char* const* arguments,
                                                  std::ostream& out);

/// The page of that name. Throws GalleryError, with what may have been meant.
int FindPage(const std::string& name);
/// The scale of a percentage that is one of the levels. Throws GalleryError.
float FindScale(int percent);

}  // namespace gallery
