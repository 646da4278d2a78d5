#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

/// What the command line asks for. An empty path stands for an option not given.
struct RenderOptions {
    std::filesystem::path input;
    std::filesystem::path output;
    std::filesystem::path plugin;
    std::filesystem::path loadState;
    std::filesystem::path saveState;
    std::filesystem::path preset;
    std::vector<std::string> settings;  // "Name=value" each, in order
    std::filesystem::path automation;
    std::filesystem::path midi;
    std::filesystem::path sideChain;
    std::filesystem::path plot;
    std::optional<double> tempoBpm;     // quarter notes per minute
    double songPositionBeats = 0.0;     // quarter notes
    std::optional<double> tailSeconds;  // nothing: until the output is quiet
    std::uint32_t blockFrames = 128;
    bool listParameters = false;
    bool overwrite = false;
    bool quiet = false;
};

/// Reads the command line. Nothing if it only asked for help, which then went to `out`.
/// Throws RenderError for unknown or missing arguments and for values out of range.
std::optional<RenderOptions> parseRenderOptions(int argumentCount, const char* const* arguments,
                                                std::ostream& out);
