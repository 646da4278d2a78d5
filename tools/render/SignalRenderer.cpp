#include "render/SignalRenderer.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

constexpr float quietLevel = 1e-4f;        // -80 dBFS
constexpr double quietEndSeconds = 0.5;    // of quiet that the output keeps
constexpr double longestSilence = 10.0;    // seconds: no delay is longer
constexpr double longestTail = 30.0;       // seconds
constexpr std::size_t usualChunk = 16384;  // frames: some 0.3 s of sound between two looks at the progress

std::size_t roundedUp(std::size_t frames, std::size_t unit) { return (frames + unit - 1) / unit * unit; }

StereoView viewAt(const StereoSignal& signal, std::size_t frame)
{
    if (frame >= signal.frames())
        return {};
    return {signal.left.data() + frame, signal.right.data() + frame};
}

}  // namespace

SignalRenderer::SignalRenderer(ClapInstance& instance, RenderRequest renderRequest, ProgressBar& progressBar)
    : request(std::move(renderRequest)),
      progress(progressBar),
      inputFrames(request.input.frames()),
      chunkFrames(roundedUp(usualChunk, request.blockFrames)),
      renderer(instance,
               {request.input.sampleRate, request.blockFrames, request.tempoBpm, request.songPositionBeats})
{
    // Whole chunks keep all blocks of one length, as a host's are.
    request.input.resize(roundedUp(inputFrames, chunkFrames));
    request.sideChain.resize(roundedUp(request.sideChain.frames(), chunkFrames));
    renderer.schedule(request.events);
    output.sampleRate = request.input.sampleRate;
}

RenderOutcome SignalRenderer::run()
{
    const auto start = std::chrono::steady_clock::now();
    renderTo(inputFrames);
    const std::size_t end = request.tailSeconds ? renderTail(*request.tailSeconds) : renderTailUntilQuiet();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;

    RenderOutcome outcome;
    outcome.renderedSeconds = output.seconds();
    outcome.wallSeconds = elapsed.count();
    outcome.tailCut = tailCut;
    const auto unreached = [end](const TimedEvent& event) {
        return event.frame >= static_cast<std::int64_t>(end);
    };
    outcome.unreachedEvents = static_cast<std::size_t>(std::ranges::count_if(request.events, unreached));
    output.resize(end);
    outcome.output = std::move(output);
    return outcome;
}

std::size_t SignalRenderer::renderTail(double seconds)
{
    const std::size_t end = inputFrames + framesIn(seconds);
    renderTo(end);
    return end;
}

std::size_t SignalRenderer::renderTailUntilQuiet()
{
    const std::size_t limit = inputFrames + framesIn(longestTail);
    const auto quietFor = [this](double seconds) {
        return std::max(inputFrames, loudEnd) + framesIn(seconds);
    };
    while (output.frames() < std::min(limit, quietFor(longestSilence))) {
        renderChunk();
        progress.update(1.0, "rendering the tail");
    }
    tailCut = quietFor(quietEndSeconds) > limit;
    return std::min(limit, quietFor(quietEndSeconds));
}

void SignalRenderer::renderTo(std::size_t frames)
{
    while (output.frames() < frames) {
        renderChunk();
        progress.update(static_cast<double>(output.frames()) / static_cast<double>(frames), "rendering");
    }
}

void SignalRenderer::renderChunk()
{
    const std::size_t first = output.frames();
    output.resize(first + chunkFrames);
    renderer.render(viewAt(request.input, first), viewAt(request.sideChain, first),
                    output.left.data() + first, output.right.data() + first,
                    static_cast<std::int64_t>(chunkFrames));
    noteLoudSamples(first);
}

void SignalRenderer::noteLoudSamples(std::size_t first)
{
    for (std::size_t i = output.frames(); i > std::max(first, loudEnd); --i) {
        if (std::fabs(output.left[i - 1]) >= quietLevel || std::fabs(output.right[i - 1]) >= quietLevel) {
            loudEnd = i;
            return;
        }
    }
}

std::size_t SignalRenderer::framesIn(double seconds) const noexcept
{
    return static_cast<std::size_t>(std::llround(seconds * request.input.sampleRate));
}
