#pragma once

#include "core/MidiListener.h"

#include <cstdio>
#include <string>
#include <vector>

/// Writes down what it hears, one line a call, with values in thousandths.
struct MidiRecorder : MidiListener {
    void channelPressure(float value) noexcept override { add("channel pressure %d", thousandths(value)); }
    void polyPressure(int key, float value) noexcept override
    {
        add("poly pressure %d %d", key, thousandths(value));
    }
    void controller(int number, int raw, float value) noexcept override
    {
        add("controller %d %d %d", number, raw, thousandths(value));
    }
    void modWheel(float value) noexcept override { add("mod wheel %d", thousandths(value)); }
    void noteOff(int key, float velocity) noexcept override { add("off %d %d", key, thousandths(velocity)); }
    void noteOn(int key, float velocity) noexcept override { add("on %d %d", key, thousandths(velocity)); }
    void pitchBend(float value) noexcept override { add("bend %d", thousandths(value)); }

    template <class... Numbers>
    void add(const char* format, Numbers... numbers)
    {
        char text[64];
        std::snprintf(text, sizeof text, format, numbers...);
        heard.emplace_back(text);
    }
    static int thousandths(float value)
    {
        return static_cast<int>(value * 1000.0f + (value < 0 ? -0.5f : 0.5f));
    }

    std::vector<std::string> heard;
};
