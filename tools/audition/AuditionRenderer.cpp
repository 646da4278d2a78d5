#include "audition/AuditionRenderer.h"

#include "clap_host/BlockRenderer.h"

#include <array>
#include <cmath>

namespace {

constexpr std::uint32_t blockFrames = 512;
constexpr const char* drySwitch = "Dry Enabled";
constexpr std::uint8_t controlChange = 0xB0;
constexpr std::uint8_t modulationWheel = 1;

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

/// The wheel rises in the third quarter of the input and falls in the last.
void addWheel(std::vector<TimedEvent>& events, double sampleRate, double seconds)
{
    for (int step = 0; step <= 254; ++step) {
        const double time = seconds * (0.5 + 0.5 * step / 254.0);
        const int position = step <= 127 ? step : 254 - step;
        events.push_back({std::llround(time * sampleRate),
                          midiEvent(0, controlChange, modulationWheel, static_cast<std::uint8_t>(position))});
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
    addWheel(events, input.sampleRate, input.seconds());

    BlockRenderer renderer(instance, {input.sampleRate, blockFrames, tempoBpm, 0.0});
    renderer.schedule(std::move(events));
    renderer.render({signal.left.data(), signal.right.data()}, {}, signal.left.data(), signal.right.data(),
                    static_cast<std::int64_t>(signal.frames()));
    return signal;
}
