#include "render/AudioFile.h"

#include "clap_host/NumberText.h"
#include "clap_host/QuotedText.h"
#include "render/RenderError.h"

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>

namespace {

// Small enough for the Vorbis encoder, which keeps what it is given on the stack.
constexpr std::size_t chunkFrames = 4096;

struct CloseSound {
    void operator()(SNDFILE* sound) const noexcept { sf_close(sound); }
};
using Sound = std::unique_ptr<SNDFILE, CloseSound>;

[[noreturn]] void failReading(const std::filesystem::path& file, const std::string& reason)
{
    throw RenderError("can't read " + inQuotes(file.string()) + ": " + reason);
}

[[noreturn]] void failWriting(const PendingFile& file, const std::string& reason, double sampleRate)
{
    throw RenderError("can't write " + inQuotes(file.target().string()) + " at " + fixedText(sampleRate, 0) +
                      " Hz: " + reason);
}

Sound openForReading(const std::filesystem::path& file, SF_INFO& info)
{
    if (std::filesystem::is_directory(file))
        failReading(file, "it is a folder");
    errno = 0;
    Sound sound(sf_open(file.c_str(), SFM_READ, &info));
    if (!sound) {
        const bool systemError = sf_error(nullptr) == SF_ERR_SYSTEM && errno != 0;
        failReading(file, systemError ? std::strerror(errno) : sf_strerror(nullptr));
    }
    if (info.channels > 2)
        failReading(file,
                    "it has " + std::to_string(info.channels) + " channels, and this is a stereo effect");
    return sound;
}

void appendFrames(StereoSignal& signal, const float* interleaved, std::size_t frames, std::size_t channels)
{
    for (std::size_t i = 0; i < frames; ++i) {
        signal.left.push_back(interleaved[i * channels]);
        signal.right.push_back(interleaved[i * channels + channels - 1]);
    }
}

int libraryFormatFor(const std::filesystem::path& file)
{
    struct Format {
        const char* extension;
        int libraryFormat;
    };
    static constexpr std::array formats{
        Format{".wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT}, Format{".flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24},
        Format{".aif", SF_FORMAT_AIFF | SF_FORMAT_PCM_24}, Format{".aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_24},
        Format{".ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS}};
    std::string extension = file.extension().string();
    std::ranges::transform(extension, extension.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    for (const Format& format : formats) {
        if (extension == format.extension)
            return format.libraryFormat;
    }
    throw RenderError("can't write " + inQuotes(file.string()) +
                      ": the name must end in .wav, .flac, .aif, .aiff or .ogg");
}

void configure(SNDFILE* sound)
{
    sf_command(sound, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    // The chunk holds the time of writing: without it, equal renderings are equal files.
    sf_command(sound, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    double vorbisQuality = 0.8;  // 0..1
    sf_command(sound, SFC_SET_VBR_ENCODING_QUALITY, &vorbisQuality, sizeof(vorbisQuality));
}

}  // namespace

StereoSignal readAudioFile(const std::filesystem::path& file)
{
    SF_INFO info{};
    const Sound sound = openForReading(file, info);
    const auto channels = static_cast<std::size_t>(info.channels);

    StereoSignal signal;
    signal.sampleRate = info.samplerate;
    std::vector<float> chunk(chunkFrames * channels);
    for (sf_count_t got = 0; (got = sf_readf_float(sound.get(), chunk.data(), chunkFrames)) > 0;)
        appendFrames(signal, chunk.data(), static_cast<std::size_t>(got), channels);

    if (sf_error(sound.get()) != SF_ERR_NO_ERROR)
        failReading(file, sf_strerror(sound.get()));
    if (signal.frames() == 0)
        failReading(file, "it holds no sound");
    return signal;
}

AudioFormat audioFormatFor(const std::filesystem::path& file)
{
    AudioFormat format;
    format.libraryFormat = libraryFormatFor(file);
    format.clips = (format.libraryFormat & SF_FORMAT_SUBMASK) == SF_FORMAT_PCM_24;
    return format;
}

void writeAudioFile(const PendingFile& file, const StereoSignal& signal, const AudioFormat& format)
{
    SF_INFO info{};
    info.format = format.libraryFormat;
    info.channels = 2;
    info.samplerate = static_cast<int>(std::lround(signal.sampleRate));
    Sound sound(sf_open(file.path().c_str(), SFM_WRITE, &info));
    if (!sound)
        failWriting(file, sf_strerror(nullptr), signal.sampleRate);
    configure(sound.get());

    std::vector<float> chunk;
    for (std::size_t first = 0; first < signal.frames(); first += chunkFrames) {
        const std::size_t count = std::min(chunkFrames, signal.frames() - first);
        chunk.clear();
        for (std::size_t i = first; i < first + count; ++i) {
            chunk.push_back(signal.left[i]);
            chunk.push_back(signal.right[i]);
        }
        if (sf_writef_float(sound.get(), chunk.data(), static_cast<sf_count_t>(count)) !=
            static_cast<sf_count_t>(count))
            failWriting(file, sf_strerror(sound.get()), signal.sampleRate);
    }
    // Closing writes what is left, and may fail on a full disk as any write.
    if (sf_close(sound.release()) != 0)
        failWriting(file, "the last part could not be written", signal.sampleRate);
}
