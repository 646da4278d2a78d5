#include "RealtimeUse.h"

#include "stress/RandomEvents.h"
#include "stress/RunLength.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <thread>

namespace {

/// Calls the plug-in under watch.
template <class Call>
void watched(calls::Counts& counts, Call&& call)
{
    calls::watch();
    call();
    counts += calls::unwatch();
}

/// Noise for both ports, the memory of the outputs, and a song.
class Buffers {
public:
    explicit Buffers(Random& random, std::uint32_t longest)
    {
        for (auto& channel : channels) {
            channel.resize(longest);
            for (float& sample : channel)
                sample = static_cast<float>(random.unit() - 0.5);
        }
        ports[1] = ports[0] = {pointers.data(), nullptr, 2, 0, 0};
        outputs[0] = {pointers.data() + 2, nullptr, 2, 0, 0};
        transport.header = {sizeof transport, 0, CLAP_CORE_EVENT_SPACE_ID, CLAP_EVENT_TRANSPORT, 0};
    }
    ClapBlock next(Random& random, std::uint32_t frames)
    {
        transport.flags = random.below(256);
        transport.tempo = 30.0 + 200.0 * random.unit();
        transport.song_pos_beats = static_cast<clap_beattime>(random.bits()) << 8;
        ports[0].constant_mask = ports[1].constant_mask = 0;
        ClapBlock block;
        block.inputs = std::span(ports).first(random.below(3));
        block.outputs = outputs;
        block.frames = frames;
        block.transport = random.oneIn(3) ? nullptr : &transport;
        return block;
    }

private:
    std::array<std::vector<float>, 4> channels;
    std::array<float*, 4> pointers{channels[0].data(), channels[1].data(), channels[2].data(),
                                   channels[3].data()};
    std::array<clap_audio_buffer_t, 2> ports{};
    std::array<clap_audio_buffer_t, 1> outputs{};
    clap_event_transport_t transport{};
};

}  // namespace

RealtimeUse::RealtimeUse(ClapInstance& used, Random& numbers, std::vector<std::string> presets)
    : instance(used), random(numbers), user(used, numbers, std::move(presets))
{
    instance.parameters();  // kept from here on, so that the audio thread may look
}

void RealtimeUse::playAtSomeRate(double seconds)
{
    constexpr double rates[] = {44100.0, 48000.0, 96000.0, 192000.0, 22050.0};
    constexpr std::uint32_t blocks[] = {32, 64, 128, 256, 512, 1024, 4096, 8192};
    const double rate = random.pick(rates);
    const std::uint32_t longest = random.pick(blocks);
    instance.activate(rate, 1, longest);
    ending = false;
    std::thread audio([&, seed = random.bits()] { play(seed, rate, longest); });
    for (const RunClock clock(seconds); clock.isRunning();)
        user.act();
    ending = true;
    audio.join();
    instance.deactivate();
}

void RealtimeUse::play(std::uint32_t seed, double sampleRate, std::uint32_t longest)
{
    Random numbers(seed);
    RandomEvents automation(instance.parameters().list(), numbers);
    EventList events(4096);
    Buffers buffers(numbers, longest);
    calls::Counts counts;
    calls::trapSystemCalls();

    watched(counts, [&] { instance.startProcessing(); });
    while (!ending) {
        const std::uint32_t frames = numbers.oneIn(4) ? 1 + numbers.below(longest) : longest;
        automation.fill(events, frames);
        ClapBlock block = buffers.next(numbers, frames);
        block.events = &events;
        watched(counts, [&] { instance.process(block); });
        if (numbers.oneIn(100))
            watched(counts, [&] { instance.flush(events); });
        if (events.size() < 10 && numbers.oneIn(1000)) {
            watched(counts, [&] {
                instance.reset();
                instance.stopProcessing();
                // Values come in while nothing plays, for as long as a fader is moved.
                for (int i = 0; i < 3000; ++i)
                    instance.flush(events);
                instance.startProcessing();
            });
        }
        ++totals.blocks;
        totals.seconds += frames / sampleRate;
    }
    watched(counts, [&] { instance.stopProcessing(); });
    totals.counts += counts;
}
