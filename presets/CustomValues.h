#pragma once

#include "foundation/BinaryDataWriter.h"

#include <cstdint>
#include <functional>
#include <istream>
#include <map>
#include <string>
#include <utility>

/// What a plug-in keeps besides its parameters, by key.
using CustomValues = std::map<std::string, std::string, std::less<>>;

/// Writes the block that presets and the host's state share: "CuSV", version 1, the number of entries, and
/// each key and value.
/// @param last  an entry to follow the others; none if its key is empty
void writeCustomValues(BinaryDataWriter& writer, const CustomValues& values,
                       const std::pair<std::string, std::string>& last = {});

/// Replaces the contents of `values` by what the block holds. Where no block begins the stream stays in its
/// place, and `values` is empty. False, with what has been read so far, if the block is damaged.
/// @param stream   seekable
/// @param version  if not null, gets the block's, which is 1 so far
bool readCustomValues(std::istream& stream, CustomValues& values, std::int32_t* version = nullptr);
