#pragma once

#include "clap_host/ClapInstance.h"
#include "clap_host/TransportClock.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

/// An event at its place in the whole rendering; the time in its header is not used.
struct TimedEvent {
    std::int64_t frame = 0;
    ClapEvent event{};
};

/// Two channels to read. Null pointers stand for silence.
struct StereoView {
    const float* left = nullptr;
    const float* right = nullptr;
};

/// Sends a long stereo signal through an instance in blocks, each event in its block and at its offset.
///
/// The instance is activated and processing for the life of this object.
class BlockRenderer {
public:
    struct Settings {
        double sampleRate = 48000.0;  // Hz
        std::uint32_t blockFrames = 128;
        std::optional<double> tempoBpm;  // nothing: the plug-in gets no transport
        double songPositionBeats = 0.0;  // where the song begins to play
    };

    /// Throws ClapHostError if the plug-in is no stereo effect or refuses the sample rate.
    BlockRenderer(ClapInstance& instance, const Settings& settings);
    ~BlockRenderer();
    BlockRenderer(const BlockRenderer&) = delete;
    BlockRenderer& operator=(const BlockRenderer&) = delete;

    /// Sets the events to come, in any order. Those before position() are never sent.
    void schedule(std::vector<TimedEvent> events);

    /// Renders the next `frames` frames, of blocks of `blockFrames` but for a shorter last one.
    /// Allocates nothing. Throws ClapHostError if the plug-in reports an error.
    /// @param input, sideChain  `frames` samples per channel, or silence
    /// @param left, right       take `frames` samples each; may be the input's memory
    void render(StereoView input, StereoView sideChain, float* left, float* right, std::int64_t frames);

    /// Frames rendered so far.
    std::int64_t position() const noexcept { return nextFrame; }

private:
    void renderBlock(StereoView input, StereoView sideChain, float* left, float* right, std::uint32_t frames);
    void collectEvents(std::uint32_t frames);

    ClapInstance& instance;
    std::uint32_t blockFrames;
    std::optional<TransportClock> clock;
    bool hasSideChain;
    std::vector<float> silence;         // blockFrames zeros, for channels without a signal
    std::vector<TimedEvent> scheduled;  // by frame
    std::size_t nextEvent = 0;
    std::int64_t nextFrame = 0;
    EventList blockEvents;
};
