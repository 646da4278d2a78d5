#pragma once

#include "core/MidiListener.h"
#include "foundation/Property.h"
#include "wave/FloatParameterSource.h"

#include <array>
#include <vector>

/// One MIDI value as a modulation signal of -1..1, smoothed. It runs only where it is read. Thread: audio,
/// but for construction.
class MidiModSource : public wave::Source, public PropertyOwner {
public:
    enum class MidiInput { ModWheel, PitchBend, Velocity, Aftertouch, KeyboardTrack, Controller };
    enum class ResponseCurve { Linear, Exponential, Logarithmic, Square, SquareRoot, Sine };

    /// The last value of every input, so that a source that turns to another one need not wait for a message.
    class Cache;

    /// @param sharedCache  tells the source of every change; outlived by none of its sources
    MidiModSource(wave::Environment& owner, Cache& sharedCache);

    /// Takes a value if this source listens to its place in the cache.
    void receive(int index, float x) noexcept REALTIME;

    /// Where the value is heading.
    float currentValue() noexcept REALTIME override;
    /// The same as 0..1, for the display.
    float displayValue() noexcept REALTIME;

    void propertyChanged(AbstractProperty& property) override;

    Property<int> controller{0, this};  // the number, 0..127, for MidiInput::Controller
    Property<MidiInput> input{MidiInput::ModWheel, this};
    FloatParameterBus level;  // gain of the output, -2..2
    Property<ResponseCurve> responseCurve{ResponseCurve::Linear, this};

protected:
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;

private:
    float response(float x) const noexcept REALTIME;

    Cache& cache;
    float (*curve)(float) noexcept;
    FloatParameter smoothed;
};

class MidiModSource::Cache : public MidiListener {
public:
    /// Takes notes and key pressure of all keys.
    static constexpr int allKeys = -1;

    Cache();

    void channelPressure(float value) noexcept REALTIME override { store(pressure, value); }
    void polyPressure(int key, float value) noexcept REALTIME override;
    void controller(int number, int raw, float value) noexcept REALTIME override;
    void modWheel(float value) noexcept REALTIME override { store(wheel, value); }
    void noteOff(int, float) noexcept REALTIME override {}
    void noteOn(int key, float velocity) noexcept REALTIME override;
    void pitchBend(float value) noexcept REALTIME override { store(bend, value); }

    int keyFilter = allKeys;  // or the one key whose notes and pressure count

private:
    friend class MidiModSource;
    static constexpr int controllers = 128;
    // Behind the controllers the inputs have their places, in the order of MidiInput.
    static constexpr int wheel = controllers;
    static constexpr int bend = controllers + 1;
    static constexpr int velocityPlace = controllers + 2;
    static constexpr int pressure = controllers + 3;
    static constexpr int keyPlace = controllers + 4;
    static constexpr int places = controllers + 5;

    bool accepts(int key) const noexcept REALTIME { return keyFilter == allKeys || keyFilter == key; }
    void store(int index, float value) noexcept REALTIME;
    float valueAt(int index) const noexcept REALTIME { return values[static_cast<std::size_t>(index)]; }

    std::array<float, places> values{};
    std::vector<MidiModSource*> sources;
};
