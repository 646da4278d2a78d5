#pragma once

#include <fstream>
#include <ios>
#include <memory>
#include <string>

/// Opens a file. What can't be opened, a folder among it, gives a stream in its failed state. Thread: any but
/// audio.
/// @param path  UTF-8
std::unique_ptr<std::fstream> openFile(const std::string& path, std::ios_base::openmode mode);
