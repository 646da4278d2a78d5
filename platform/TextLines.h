#pragma once

#include "platform/TextShaper.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace gui {

/// True if a line of that text isn't too long.
using FitsLine = std::function<bool(std::string_view)>;

/// The longest start of `text` that fits with "…" behind it, or all of it if it fits without.
std::string CutWithEllipsis(std::string_view text, const FitsLine& fits);

/// `text` in lines, broken at "\n", between words, and within a word that is too long for a line of its own.
/// At least one line.
std::vector<std::string> WrapWords(std::string_view text, const FitsLine& fits);

}  // namespace gui
