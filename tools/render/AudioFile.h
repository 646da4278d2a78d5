#pragma once

#include "clap_host/StereoSignal.h"
#include "render/PendingFile.h"

#include <filesystem>

// Sound files of whatever format the installed libsndfile knows.

/// Reads a whole file. One channel becomes two equal ones; the sample rate stays the file's.
/// Throws RenderError if the file can't be read, is damaged, has more than two channels, or holds no sound.
StereoSignal readAudioFile(const std::filesystem::path& file);

/// How samples are kept in a file, chosen by the extension of its name.
struct AudioFormat {
    int libraryFormat = 0;  // libsndfile's format number
    bool clips = false;     // beyond full scale nothing can be kept
};

/// ".wav" gives 32-bit float, ".flac", ".aif" and ".aiff" 24 bits, ".ogg" Vorbis; case doesn't matter.
/// Throws RenderError for any other extension.
AudioFormat audioFormatFor(const std::filesystem::path& file);

/// Writes `signal` under the temporary name of `file`; the rest is left to its commit(). Samples beyond full
/// scale are held at full scale if the format clips.
/// Throws RenderError if it can't be written, or if the format can't hold the sample rate.
void writeAudioFile(const PendingFile& file, const StereoSignal& signal, const AudioFormat& format);
