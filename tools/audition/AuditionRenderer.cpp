#include "audition/AuditionRenderer.h"

#include "clap_host/BlockRenderer.h"

#include <array>
#include <cmath>
#include <numbers>

namespace {

constexpr std::uint32_t blockFrames = 512;
constexpr const char* drySwitch = "Dry Enabled";
constexpr std::uint8_t controlChange = 0xB0;
constexpr std::uint8_t channelPressure = 0xD0;
constexpr std::uint8_t pitchBend = 0xE0;

/// Notes of rising and falling force, at even times.
void addNotes(std::vector<TimedEvent>& events, double sampleRate, double seconds)
{
    constexpr double interval = 0.5;  // seconds
    constexpr double length = 0.3;
    static constexpr std::array keys{48, 60, 55, 67};
    static constexpr std::array velocities{0.4, 0.8, 0.6, 1.0};
    std::size_t note = 0;
    for (double start = 0.0; start < seconds; start += interval, ++note) {
        const int key = keys[note % keys.size()];
        events.push_back(
            {std::llround(start * sampleRate), noteOnEvent(0, 0, key, velocities[note % velocities.size()])});
        events.push_back({std::llround((start + length) * sampleRate), noteOffEvent(0, 0, key, 0.5)});
    }
}

/// A controller that rises and falls again between two places of the input, 0..1.
struct Move {
    std::uint8_t status;
    std::uint8_t number;  // of a controller
    double from;
    double to;
};
constexpr std::array moves{Move{controlChange, 1, 0.5, 1.0},     // the modulation wheel
                           Move{controlChange, 2, 0.2, 0.5},     // breath
                           Move{controlChange, 4, 0.5, 0.8},     // the foot pedal
                           Move{controlChange, 11, 0.05, 0.95},  // expression
                           Move{controlChange, 64, 0.6, 0.9},    // sustain
                           Move{channelPressure, 0, 0.0, 0.5}};

void addMove(std::vector<TimedEvent>& events, const Move& move, double frames)
{
    for (int step = 0; step <= 254; ++step) {
        const auto position = static_cast<std::uint8_t>(step <= 127 ? step : 254 - step);
        const double place = move.from + (move.to - move.from) * step / 254.0;
        const bool pressure = move.status == channelPressure;
        events.push_back(
            {std::llround(place * frames),
             midiEvent(0, move.status, pressure ? position : move.number, pressure ? 0 : position)});
    }
}

/// The bender goes up and down once and comes back.
void addBend(std::vector<TimedEvent>& events, double frames)
{
    for (int step = 0; step <= 200; ++step) {
        const double turn = std::sin(2.0 * std::numbers::pi * step / 200.0);
        const int position = 8192 + static_cast<int>(std::lround(8191.0 * turn));
        events.push_back({std::llround(frames * step / 200.0),
                          midiEvent(0, pitchBend, static_cast<std::uint8_t>(position & 127),
                                    static_cast<std::uint8_t>(position >> 7))});
    }
}

}  // namespace

StereoSignal AuditionRenderer::render(const std::vector<ClapEvent>& values, const StereoSignal& input,
                                      Dry dry) const
{
    ClapInstance instance(module);
    EventList preset(values.size() + 1);
    for (const ClapEvent& value : values)
        preset.add(value);
    preset.add(parameterEvent(0, instance.parameters().require(drySwitch).id, dry == Dry::On ? 1.0 : 0.0));
    instance.flush(preset);

    StereoSignal signal = input;
    signal.resize(input.frames() + static_cast<std::size_t>(tail * input.sampleRate));
    std::vector<TimedEvent> events;
    addNotes(events, input.sampleRate, input.seconds());
    for (const Move& move : moves)
        addMove(events, move, static_cast<double>(input.frames()));
    addBend(events, static_cast<double>(input.frames()));

    BlockRenderer renderer(instance, {input.sampleRate, blockFrames, tempoBpm, 0.0});
    renderer.schedule(std::move(events));
    const StereoSignal sideChain = signal;
    renderer.render({signal.left.data(), signal.right.data()},
                    {sideChain.left.data(), sideChain.right.data()}, signal.left.data(), signal.right.data(),
                    static_cast<std::int64_t>(signal.frames()));
    return signal;
}
