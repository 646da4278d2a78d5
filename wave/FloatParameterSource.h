#pragma once

#include "wave/FloatParameter.h"

/// A parameter as a producer.
class FloatParameterSource : public wave::Source, public ValueAssignable<float> {
public:
    FloatParameterSource(wave::Environment& owner, float initial);
    void assign(float value) noexcept REALTIME override { parameter.assign(value); }

    FloatParameter parameter;

protected:
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;
};

/// A producer that shows a parameter which lives elsewhere.
class FloatParameterForwarder : public wave::Source {
public:
    FloatParameterForwarder(wave::Environment& owner, FloatParameter& shown);
    /// The parameter's target, not where a ramp stands.
    float currentValue() noexcept REALTIME override { return parameter.target(); }

protected:
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;

private:
    FloatParameter& parameter;
};

/// The input of a component that a parameter feeds and a modulation may take over: `current` is what the
/// component reads, at first the parameter in here.
class FloatParameterBus : public ValueAssignable<float> {
public:
    FloatParameterBus(wave::Environment& owner, float initial) : source(owner, initial), current(&source) {}
    /// Sets the parameter in here, whatever is read.
    void assign(float value) noexcept REALTIME override { source.assign(value); }
    /// Reads `producer`, or the parameter in here if it is null.
    void connect(wave::Producer* producer) noexcept REALTIME { current = producer ? producer : &source; }
    wave::Block& pull(int count) noexcept REALTIME { return current->pull(count); }
    /// Gets the value that the parameter in here keeps for `count` samples, without a block of it. False if
    /// it moves, or if something else is read: then `pull` is due.
    bool rests(int count, float& value) noexcept REALTIME
    {
        if (current != &source || !source.parameter.rest(count))
            return false;
        value = source.parameter.target();
        return true;
    }
    FloatParameter& parameter() noexcept REALTIME { return source.parameter; }
    /// Where the input stands, also while nobody reads it.
    float presentValue() noexcept REALTIME
    {
        return current == &source ? source.parameter.target() : current->currentValue();
    }

private:
    FloatParameterSource source;

public:
    wave::Producer* current;
};
