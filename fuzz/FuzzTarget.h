#pragma once

#include <functional>
#include <string>
#include <vector>

/// A reader of bytes that come from anywhere.
struct FuzzTarget {
    std::string name;
    std::vector<std::string> seeds;  // well-formed, to be damaged
    /// Reads the bytes. Returns what is wrong afterwards, or nothing.
    std::function<std::string(const std::string& bytes)> read;
};

/// All readers that a user's or a host's files reach.
std::vector<FuzzTarget> fuzzTargets();
