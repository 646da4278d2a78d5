#include "modulation/MidiModSource.h"

#include "foundation/Tolerance.h"

#include <cmath>

namespace {

float sign(float x) noexcept { return static_cast<float>((x > 0.0f) - (x < 0.0f)); }

float linear(float x) noexcept { return x; }

/// 36 dB of range, with a straight piece at the bottom that meets the curve.
float exponential(float x) noexcept
{
    constexpr float rangeDb = 36.0f;
    constexpr float nepersPerDb = 0.1151292546497023f;
    const float magnitude = std::fabs(x);
    return sign(x) * (magnitude > 0.1f ? std::exp((magnitude - 1.0f) * rangeDb * nepersPerDb)
                                       : magnitude * 0.23988324f);
}

float logarithmic(float x) noexcept
{
    constexpr float inverseOfLog11 = 0.417032390832901f;
    return std::log(std::fabs(x) * 10.0f + 1.0f) * inverseOfLog11 * sign(x);
}

float square(float x) noexcept { return x * std::fabs(x); }

float squareRoot(float x) noexcept { return sign(x) * std::sqrt(std::fabs(x)); }

float sine(float x) noexcept
{
    constexpr float pi = 3.141592653589793f;
    return (std::sin((x - 0.5f) * pi) + 1.0f) * 0.5f * sign(x);
}

using Curve = float (*)(float) noexcept;

// In the order of ResponseCurve.
constexpr Curve curves[] = {linear, exponential, logarithmic, square, squareRoot, sine};

}  // namespace

MidiModSource::MidiModSource(wave::Environment& owner, Cache& sharedCache)
    : Source(owner), level(owner, 1.0f), cache(sharedCache), curve(linear), smoothed(owner, 0.0f)
{
    level.parameter().setRange(-2.0f, 2.0f);
    // A step of 0.15 already takes the short ramp, so that moves of a wheel are followed quickly.
    smoothed.setRange(-1.0f, 1.0f, 0.5f);
    registerForReset();
    cache.sources.push_back(this);
}

void MidiModSource::propertyChanged(AbstractProperty& property)
{
    if (&property == &responseCurve)
        curve = curves[static_cast<std::size_t>(responseCurve.value())];
    const int place = input.value() == MidiInput::Controller
                          ? controller.value()
                          : Cache::controllers + static_cast<int>(input.value());
    receive(place, cache.valueAt(place));
}

void MidiModSource::receive(int index, float x) noexcept
{
    const bool isController = index < Cache::controllers;
    const auto from =
        isController ? MidiInput::Controller : static_cast<MidiInput>(index - Cache::controllers);
    if (from != input.value() || (isController && index != controller.value()))
        return;
    smoothed.setValue(response(x), FloatParameter::automaticRamp);
}

float MidiModSource::response(float x) const noexcept
{
    constexpr float perKey = 0.008333334f;  // 120 keys are 1
    constexpr float restingKey = 0.4f;      // key 48
    switch (input.value()) {
    case MidiInput::PitchBend:
        return curve(2.0f * x);
    case MidiInput::Velocity:
        return curve(x) * 2.0f - 1.0f;
    case MidiInput::KeyboardTrack:
        return curve(std::trunc(x) * perKey) - curve(restingKey);
    case MidiInput::ModWheel:
    case MidiInput::Aftertouch:
    case MidiInput::Controller:
        break;
    }
    return curve(x);
}

float MidiModSource::currentValue() noexcept { return level.presentValue() * smoothed.target(); }

float MidiModSource::displayValue() noexcept
{
    const float present = currentValue();
    return std::fabs(input.value() == MidiInput::Velocity ? (present + 1.0f) * 0.5f : present);
}

void MidiModSource::generate(wave::Block* block, int count, int) noexcept
{
    wave::Block& rendered = smoothed.render(count);
    const wave::Block& gain = level.pull(count);
    if (gain.isConstant() && isNear(gain[0], 1.0f)) {
        show(rendered);
        return;
    }
    for (int i = 0; i < count; ++i)
        (*block)[i] = rendered[i] * gain[i];
    block->setConstant(rendered.isConstant() && gain.isConstant());
}

MidiModSource::Cache::Cache()
{
    values[velocityPlace] = 0.5f;
    values[keyPlace] = 48.0f;
}

void MidiModSource::Cache::polyPressure(int key, float value) noexcept
{
    if (accepts(key))
        store(pressure, value);
}

void MidiModSource::Cache::controller(int number, int, float value) noexcept
{
    if (number >= 0 && number < controllers)
        store(number, value);
}

void MidiModSource::Cache::noteOn(int key, float velocity) noexcept
{
    if (!accepts(key))
        return;
    store(velocityPlace, velocity);
    store(keyPlace, static_cast<float>(key));
}

void MidiModSource::Cache::store(int index, float value) noexcept
{
    values[static_cast<std::size_t>(index)] = value;
    for (MidiModSource* source : sources)
        source->receive(index, value);
}
