#include "modulation/Mixer.h"

#include "foundation/Float4.h"
#include "foundation/Tolerance.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float smallest = 1e-9f;

bool startsFromMagnitude(Mixer::Operation operation) noexcept
{
    using enum Mixer::Operation;
    return operation == LargestMagnitude || operation == DivideClamped || operation == DivideFloored ||
           operation == DivideHeld;
}

/// What one further input makes of the result so far, but for DivideHeld, which needs a memory.
float joined(Mixer::Operation operation, float y, float p) noexcept
{
    switch (operation) {
    case Mixer::Operation::Add:
        return y + p;
    case Mixer::Operation::Subtract:
        return y - p;
    case Mixer::Operation::LargestMagnitude:
        return std::max(std::fabs(p), y);
    case Mixer::Operation::Multiply:
        return y * p;
    case Mixer::Operation::DivideClamped:
        return p == 0.0f ? 0.0f : std::clamp(y / std::fabs(p), 0.0f, 1.0f);
    case Mixer::Operation::DivideFloored:
        return std::max(y, smallest) / std::max(std::fabs(p), smallest);
    case Mixer::Operation::DivideHeld:
        break;
    case Mixer::Operation::Largest:
        return std::max(y, p);
    case Mixer::Operation::Smallest:
        return std::min(y, p);
    }
    return y;
}

/// Four samples at a time; the blocks have room for that.
template <class F>
void fillByFours(float* out, int count, F samplesAt) noexcept
{
    for (int i = 0; i < count; i += Float4::width)
        samplesAt(i).store(out + i);
}

/// out = before + in * gain, or in * gain where there is nothing before. `before` may be `out`.
void accumulate(float* out, const float* before, const wave::Block& in, const wave::Block& gain,
                int count) noexcept
{
    const float* x = in.data();
    const float* g = gain.data();
    const Float4 steady(g[0]);
    const auto scaled = [&](int i) { return Float4::load(x + i) * steady; };
    const auto shaped = [&](int i) { return Float4::load(x + i) * Float4::load(g + i); };
    const auto behind = [&](int i) { return Float4::load(before + i); };
    if (gain.isConstant() && before)
        fillByFours(out, count, [&](int i) { return behind(i) + scaled(i); });
    else if (gain.isConstant())
        fillByFours(out, count, scaled);
    else if (before)
        fillByFours(out, count, [&](int i) { return behind(i) + shaped(i); });
    else
        fillByFours(out, count, shaped);
}

}  // namespace

Mixer::MixerInput::MixerInput(wave::Environment& owner, float gainLower, float gainUpper) : gain(owner, 1.0f)
{
    gain.parameter().setRange(gainLower, gainUpper);
}

Mixer::Mixer(wave::Environment& owner, int inputCount, Operation mixOperation)
    : Source(owner, OwnBlock::Passing), operation(mixOperation)
{
    setInputCount(inputCount);
}

void Mixer::setInputCount(int count)
{
    const auto wanted = static_cast<std::size_t>(count);
    if (inputs.size() > wanted)
        inputs.resize(wanted);
    while (inputs.size() < wanted)
        inputs.push_back(std::make_unique<MixerInput>(environment(), gainLower, gainUpper));
}

void Mixer::generate(wave::Block* block, int count, int) noexcept
{
    if (operation.value() == Operation::Add)
        sum(*block, count);
    else
        combine(*block, count);
}

void Mixer::sum(wave::Block& block, int count) noexcept
{
    wave::Block* untouched = nullptr;  // the only input so far, at unity
    bool empty = true;
    bool constant = true;
    for (const auto& one : inputs) {
        if (!one->source)
            continue;
        const wave::Block& gain = one->gain.pull(count);
        if (gain.isConstant() && isNear(gain[0], 0.0f))
            continue;
        wave::Block& in = one->source->pull(count);
        constant = constant && in.isConstant() && gain.isConstant();
        if (empty && gain.isConstant() && isNear(gain[0], 1.0f)) {
            untouched = &in;
        } else {
            const float* before = untouched ? untouched->data() : empty ? nullptr : block.data();
            untouched = nullptr;
            accumulate(block.data(), before, in, gain, count);
        }
        empty = false;
    }
    block.setConstant(constant);
    if (empty)
        show(environment().silentBlock());
    else if (untouched)
        show(*untouched);
}

void Mixer::combine(wave::Block& block, int count) noexcept
{
    bool empty = true;
    bool constant = true;
    const bool magnitude = startsFromMagnitude(operation.value());
    float* y = block.data();
    for (const auto& one : inputs) {
        if (!one->source)
            continue;
        const wave::Block& gain = one->gain.pull(count);
        const wave::Block& in = one->source->pull(count);
        constant = constant && in.isConstant() && gain.isConstant();
        if (empty) {
            for (int i = 0; i < count; ++i)
                y[i] = (magnitude ? std::fabs(in[i]) : in[i]) * gain[i];
        } else {
            apply(in, gain, y, count);
        }
        empty = false;
    }
    block.setConstant(constant);
    if (empty)
        show(environment().silentBlock());
}

void Mixer::apply(const wave::Block& in, const wave::Block& gain, float* y, int count) noexcept
{
    const Operation kind = operation.value();
    if (kind == Operation::LargestMagnitude) {  // the one that runs in every block
        for (int i = 0; i < count; ++i)
            y[i] = std::max(std::fabs(in[i] * gain[i]), y[i]);
        return;
    }
    for (int i = 0; i < count; ++i) {
        const float p = in[i] * gain[i];
        if (kind != Operation::DivideHeld) {
            y[i] = joined(kind, y[i], p);
            continue;
        }
        if (std::fabs(p) > smallest)
            lastRatio = y[i] / std::fabs(p);
        y[i] = lastRatio;
    }
}
