#pragma once

#include "clap_host/BlockRenderer.h"
#include "clap_host/StereoSignal.h"
#include "render/ProgressBar.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// What to send through the plug-in.
struct RenderRequest {
    StereoSignal input;
    StereoSignal sideChain;  // empty: silence; else of the input's sample rate
    std::vector<TimedEvent> events;
    std::uint32_t blockFrames = 128;
    std::optional<double> tempoBpm;
    double songPositionBeats = 0.0;
    std::optional<double> tailSeconds;  // nothing: until the output is quiet
};

struct RenderOutcome {
    StereoSignal output;
    std::size_t unreachedEvents = 0;  // behind the end of the output
    bool tailCut = false;             // the output was still sounding when time ran out
    double renderedSeconds = 0.0;     // of sound, with what was cut off again
    double wallSeconds = 0.0;         // that this took
};

/// Renders an input and the tail that sounds after it.
///
/// Unless a length is given, the output ends half a second after its last sample above -80 dBFS, and at most
/// 30 seconds after the input. To find that sample the rendering goes on for the length of the longest delay,
/// since an echo may follow a long silence.
class SignalRenderer {
public:
    /// `instance` isn't active; it and the others outlive this object.
    SignalRenderer(ClapInstance& instance, RenderRequest request, ProgressBar& progress);

    /// Once only. Throws ClapHostError if the plug-in fails.
    RenderOutcome run();

private:
    void renderTo(std::size_t frames);  // whole chunks, to this length at least
    // Both give the frame at which the output ends; more may be rendered.
    std::size_t renderTail(double seconds);
    std::size_t renderTailUntilQuiet();
    void renderChunk();
    void noteLoudSamples(std::size_t first);
    std::size_t framesIn(double seconds) const noexcept;

    RenderRequest request;
    ProgressBar& progress;
    const std::size_t inputFrames;
    const std::size_t chunkFrames;  // a whole number of blocks
    BlockRenderer renderer;
    StereoSignal output;
    std::size_t loudEnd = 0;  // one past the last sample above the threshold
    bool tailCut = false;
};
