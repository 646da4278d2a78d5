#include "HostileBlock.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

// Valgrind computes as if denormal numbers were never flushed, and so lets them pass.
const bool seesDenormals = std::getenv("SORDELIN_VALGRIND") == nullptr;

bool isProper(float sample)
{
    return std::isfinite(sample) &&
           (sample == 0.0f || std::fabs(sample) >= std::numeric_limits<float>::min() || !seesDenormals);
}

}  // namespace

HostileBlock::HostileBlock(Random& numbers, const std::vector<ClapParameter>& pluginParameters)
    : random(numbers),
      parameters(pluginParameters),
      orderly(pluginParameters, numbers),
      hostileEvents(numbers, static_cast<std::uint32_t>(pluginParameters.size())),
      someDoubles(mostFrames, 0.5)
{
    for (Port& port : inputPorts)
        port.channels.fill(Channel(mostFrames + guardFrames));
    outputPort.channels.fill(Channel(mostFrames + guardFrames));
    output.ctx = this;
    output.try_push = push;
}

void HostileBlock::arrange(std::uint32_t longest)
{
    const std::uint32_t usual[] = {1, 16, 64, 127, 128, 129, 512, longest};
    block.frames_count = std::min(longest, random.oneIn(3) ? random.below(longest + 1) : random.pick(usual));
    block.steady_time = random.oneIn(4) ? -1 : static_cast<std::int64_t>(random.bits());
    arrangeTransport();
    arrangeInputs();
    arrangeOutputs();
    arrangeEvents();
}

void HostileBlock::arrangeTransport()
{
    constexpr double tempos[] = {0.0,
                                 -120.0,
                                 1e-300,
                                 1e300,
                                 std::numeric_limits<double>::quiet_NaN(),
                                 std::numeric_limits<double>::infinity(),
                                 999.0};
    transport = {};
    transport.header = {sizeof transport, 0, CLAP_CORE_EVENT_SPACE_ID, CLAP_EVENT_TRANSPORT, 0};
    transport.flags = random.below(256);
    transport.tempo = random.oneIn(4) ? random.pick(tempos) : 40.0 + 200.0 * random.unit();
    // Any bits at all, as well as places that there are in a song.
    const auto place = static_cast<std::int64_t>(std::uint64_t{random.bits()} << 32 | random.bits());
    transport.song_pos_beats = random.oneIn(8) ? place : place >> 20;
    block.transport = random.oneIn(4) ? nullptr : &transport;
}

bool HostileBlock::fillSignal(Channel& channel)
{
    using Limits = std::numeric_limits<float>;
    constexpr float strange[] = {Limits::quiet_NaN(),
                                 Limits::infinity(),
                                 -Limits::infinity(),
                                 Limits::max(),
                                 Limits::lowest(),
                                 Limits::denorm_min(),
                                 -1e-39f,
                                 1e30f,
                                 0.0f,
                                 1.0f,
                                 -1.0f};
    const auto frames = static_cast<std::ptrdiff_t>(block.frames_count);
    const auto fill = [&](auto next) { std::generate_n(channel.begin(), frames, next); };
    const std::uint32_t kind = random.below(8);
    const float level = kind < 2 ? random.pick(strange) : 0.0f;
    if (kind < 4)
        fill([&] { return level; });
    else if (kind == 4)
        fill([&] { return random.pick(strange); });
    else
        fill([&] { return static_cast<float>(random.unit() * 2.0 - 1.0); });
    std::fill_n(channel.begin() + frames, guardFrames, guard);
    return kind < 4;
}

void HostileBlock::arrangeInputs()
{
    block.audio_inputs_count = random.oneIn(3) ? random.below(maxPorts + 1) : 2;
    block.audio_inputs = block.audio_inputs_count > 0 ? inputs.data() : nullptr;
    for (std::uint32_t p = 0; p < block.audio_inputs_count; ++p) {
        Port& port = inputPorts[p];
        inputs[p] = {};
        inputs[p].channel_count = random.oneIn(4) ? random.below(maxChannels + 1) : 2;
        for (std::uint32_t c = 0; c < maxChannels; ++c) {
            const bool constant = fillSignal(port.channels[c]);
            if (constant && random.oneIn(2))
                inputs[p].constant_mask |= std::uint64_t{1} << c;
            port.before[c].assign(port.channels[c].begin(),
                                  port.channels[c].begin() + block.frames_count + guardFrames);
            port.pointers[c] = random.oneIn(20) ? nullptr : port.channels[c].data();
            port.doubles[c] = someDoubles.data();
        }
        inputs[p].constant_mask |= random.oneIn(4) ? ~std::uint64_t{7} : 0;  // channels that there aren't
        const std::uint32_t kind = random.below(20);
        inputs[p].data32 = kind == 0 ? nullptr : port.pointers.data();
        inputs[p].data64 = kind <= 1 ? port.doubles.data() : nullptr;
    }
}

void HostileBlock::arrangeOutputs()
{
    block.audio_outputs_count = random.oneIn(20) ? 0 : 1;
    block.audio_outputs = block.audio_outputs_count > 0 ? outputs.data() : nullptr;
    outputs[0] = {};
    outputs[0].channel_count = random.oneIn(6) ? random.below(maxChannels + 1) : 2;
    outputs[0].constant_mask = random.oneIn(2) ? ~std::uint64_t{0} : 0;  // of the block before
    const std::uint32_t way = random.below(4);
    for (std::uint32_t c = 0; c < maxChannels; ++c) {
        Channel& own = outputPort.channels[c];
        std::fill_n(own.begin(), block.frames_count, unwritten);
        std::fill_n(own.begin() + block.frames_count, guardFrames, guard);
        outputPort.pointers[c] = own.data();
        outputPort.doubles[c] = someDoubles.data();
        // In place, some hosts with the channels exchanged, or over the side chain.
        const std::uint32_t port = way == 2 ? 1 : 0;
        float* shared = inputPorts[port].channels[way == 3 && c < 2 ? 1 - c : c].data();
        if (way >= 1 && random.oneIn(2))
            outputPort.pointers[c] = shared;
        if (random.oneIn(40))
            outputPort.pointers[c] = nullptr;
    }
    const std::uint32_t kind = random.below(30);
    outputs[0].data32 = kind == 0 ? nullptr : outputPort.pointers.data();
    outputs[0].data64 = kind <= 1 ? outputPort.doubles.data() : nullptr;
}

void HostileBlock::arrangeEvents()
{
    const std::uint32_t kind = random.below(8);
    block.in_events = nullptr;
    if (kind >= 5) {
        hostileEvents.fill(block.frames_count);
        block.in_events = hostileEvents.record();
    } else if (kind >= 1) {
        orderly.fill(orderlyEvents, std::max(block.frames_count, 1u));
        block.in_events = orderlyEvents.record();
    }
    refusesOutput = random.oneIn(8);
    block.out_events = random.oneIn(8) ? nullptr : &output;
    lastOutputTime = 0;
    outputEventFault = nullptr;
}

bool HostileBlock::push(const clap_output_events_t* list, const clap_event_header_t* event)
{
    auto& self = *static_cast<HostileBlock*>(list->ctx);
    if (!event || event->space_id != CLAP_CORE_EVENT_SPACE_ID)
        self.outputEventFault = "an event of no space came out";
    else if (event->time < self.lastOutputTime || event->time > self.block.frames_count)
        self.outputEventFault = "an event came out of order or out of the block";
    else if (event->type == CLAP_EVENT_PARAM_VALUE) {
        const auto& change = *reinterpret_cast<const clap_event_param_value_t*>(event);
        if (event->size != sizeof change || change.param_id >= self.parameters.size())
            self.outputEventFault = "a value of no parameter came out";
        else if (const ClapParameter& of = self.parameters[change.param_id];
                 !(change.value >= of.minimum && change.value <= of.maximum))
            self.outputEventFault = "a value out of range came out";
    }
    if (event)
        self.lastOutputTime = event->time;
    return !self.refusesOutput;
}

const char* HostileBlock::fault() const
{
    if (outputEventFault)
        return outputEventFault;
    if (const char* found = inputFault())
        return found;
    return outputFault();
}

bool HostileBlock::isGuarded(const Channel& channel) const
{
    const auto end = channel.begin() + block.frames_count;
    return std::all_of(end, end + guardFrames, [](float x) { return x == guard; });
}

bool HostileBlock::isShared(const float* samples) const
{
    if (block.audio_outputs_count == 0 || !outputs[0].data32)
        return false;
    const auto end = outputPort.pointers.begin() + outputs[0].channel_count;
    return std::find(outputPort.pointers.begin(), end, samples) != end;
}

const char* HostileBlock::inputFault() const
{
    for (std::uint32_t p = 0; p < block.audio_inputs_count; ++p) {
        for (std::uint32_t c = 0; c < maxChannels; ++c) {
            const Channel& now = inputPorts[p].channels[c];
            const Channel& before = inputPorts[p].before[c];
            if (!isGuarded(now))
                return "something was written behind an input";
            const auto same = [](float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); };
            if (!isShared(now.data()) && !std::equal(before.begin(), before.end(), now.begin(), same))
                return "an input was changed";
        }
    }
    return nullptr;
}

const char* HostileBlock::outputFault() const
{
    if (block.audio_outputs_count == 0 || !outputs[0].data32)
        return nullptr;
    for (std::uint32_t c = 0; c < outputs[0].channel_count; ++c) {
        const float* samples = outputPort.pointers[c];
        if (!samples)
            return nullptr;  // and nobody has to write what is behind it
        const float* end = samples + block.frames_count;
        const bool constant = std::all_of(samples, end, [samples](float x) { return x == samples[0]; });
        if ((outputs[0].constant_mask >> c & 1) && !constant)
            return "the constant mask lies";
        if (c >= 2)
            continue;
        if (!std::all_of(samples, end, isProper))
            return "no proper number came out";
        if (std::find(samples, end, unwritten) != end)
            return "an output was left as it was";
        if (!isGuarded(outputPort.channels[c]))
            return "something was written behind an output";
    }
    return nullptr;
}
