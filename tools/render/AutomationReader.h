#pragma once

#include <filesystem>
#include <istream>
#include <string>
#include <vector>

/// One line of an automation file, its parameter and value not yet looked up.
struct AutomationPoint {
    double seconds = 0.0;   // from the start of the input, 0 or more
    std::string parameter;  // its name
    std::string value;      // in the plug-in's words, or a number
    int line = 0;           // in the file, from 1
};

/// "moves.csv, line 7: ", with which every message about that line begins.
std::string linePrefix(const std::string& fileName, int line);

/// Reads comma-separated lines of seconds, parameter and value, in any order of time.
///
/// Blanks around a field don't count. A field with a comma or a leading "#" stands in double quotes; a quote
/// inside them is doubled. Empty lines and lines that begin with "#" are skipped, and so is a heading in the
/// first line, recognised by its first field, "seconds" or "time". Line ends may be LF or CR LF.
///
/// Throws RenderError, with `fileName` and the line's number, for a line that doesn't fit.
std::vector<AutomationPoint> readAutomation(std::istream& text, const std::string& fileName);

/// As above, of a file; throws RenderError if it can't be opened.
std::vector<AutomationPoint> readAutomationFile(const std::filesystem::path& file);
