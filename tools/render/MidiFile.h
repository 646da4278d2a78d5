#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// A channel message of a MIDI file at its time.
struct MidiFileMessage {
    double seconds = 0.0;  // from the start of the file
    std::uint8_t status = 0;
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;  // 0 for messages of one data byte
};

/// Reads a Standard MIDI File of format 0 or 1: the channel messages of all its tracks, in order of time and,
/// at one time, of their tracks. Times follow the file's own tempos, from 120 on, or its time code. System
/// messages and texts are skipped.
///
/// Throws RenderError, with `fileName` and the offset of the byte, for anything malformed.
std::vector<MidiFileMessage> readMidi(std::string_view bytes, const std::string& fileName);

/// As above, of a file; throws RenderError if it can't be read.
std::vector<MidiFileMessage> readMidiFile(const std::filesystem::path& file);
