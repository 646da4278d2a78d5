#pragma once

#include <string>
#include <string_view>

/// The version of the product, as in "2.41": major 2, minor 4, patch 1.
struct VersionInfo {
    int major = 1;
    int minor = 0;
    int patch = 0;

    /// Reads a version text: the number before the ".", then one character for the minor number and one for
    /// the patch. A text without a ".", or with fewer than two characters behind it, is the major number
    /// alone. An invalid text gives version 1.00.
    static VersionInfo fromText(std::string_view text);
    /// Major, ".", minor and patch, as in "2.41".
    std::string toText() const;
    /// A product's name as hosts, folders and windows show it: from the second major version on with its
    /// number, as in "Sordelin 2".
    std::string nameOf(const std::string& product) const;
};
