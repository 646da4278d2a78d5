#pragma once

#include <string>
#include <string_view>
#include <vector>

/// ASCII letters of both cases are the same; everything else is compared byte by byte.
bool equalsIgnoringCase(std::string_view a, std::string_view b) noexcept;

/// The names that a person may have meant by `wanted`, best first: those that hold it whole, then those that
/// differ in few letters (insertions, deletions, exchanges), case ignored.
/// @param limit  the most names to give; none is given that differs in more than about half of its letters
std::vector<std::string> nearestNames(std::string_view wanted, const std::vector<std::string>& names,
                                      std::size_t limit);

/// "; did you mean " and up to three of them in quotes; empty if none is near.
std::string didYouMean(std::string_view wanted, const std::vector<std::string>& names);
