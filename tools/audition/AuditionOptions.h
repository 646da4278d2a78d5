#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

/// What the command line asks for. An empty path stands for an option not given.
struct AuditionOptions {
    std::filesystem::path root;    // of the presets
    std::filesystem::path plugin;  // the module
    std::filesystem::path samples = "/usr/share/sonic-pi/samples";
    std::filesystem::path sheet;
    std::filesystem::path stage;        // a preset on which section presets are heard
    std::vector<std::string> only;      // parts of labels; empty for all
    std::vector<std::string> forgiven;  // labels whose faults don't count
    int columns = 6;
    double sheetScale = 1.0;
    double tailSeconds = 8.0;
    bool materials = false;  // a line for each material
    bool check = false;      // only whether the plug-in reads everything
    bool quiet = false;
};

/// Reads the command line. Nothing if it only asked for help, which then went to `out`.
/// Throws RenderError for unknown or missing arguments and for values out of range.
std::optional<AuditionOptions> parseAuditionOptions(int argumentCount, const char* const* arguments,
                                                    std::ostream& out);
