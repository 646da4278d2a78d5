#pragma once

#include "modulation/XLFO.h"
#include "modulation/XLFOFreqController.h"
#include "support/GraphFixture.h"
#include "support/XLFOShape.h"

#include <vector>

/// An XLFO with its rate, whose signals a test sets, and what it should play.
struct XLFOFixture : GraphFixture {
    using Shape = XLFOShape;

    /// Rises from -1 at phase 0 to 1 at phase 0.5 and falls again: tells the phase.
    static Shape triangle() { return {{{-1.0, 1.0}, {1.0, 1.0}}}; }

    explicit XLFOFixture(const Shape& playedShape = triangle()) : shape(playedShape)
    {
        xlfo.glide.connect(&glide);
        xlfo.phaseOffset.connect(&offset);
        xlfo.balance.assign(shape.balance);
        xlfo.numSteps.assign(static_cast<int>(shape.steps.size()));
        for (int i = 0; i < xlfo.numSteps.value(); ++i) {
            const Shape::Step& from = shape.steps[static_cast<std::size_t>(i)];
            xlfo.step(i).value.assign(static_cast<float>(from.value));
            xlfo.step(i).glide.assign(static_cast<float>(from.glide));
            xlfo.step(i).glideCurve.assign(from.curve);
        }
        addedGlide = static_cast<float>(shape.addedGlide);
        xlfo.reset();
    }

    /// As a host that plays from `beats` on, in blocks of `hostBlock` samples.
    std::vector<float> playSong(double beats, int samples, int hostBlock = 512)
    {
        const std::uint64_t begin = environment.now();
        return render(xlfo, samples, 128, [=, this](std::uint64_t now) {
            if ((now - begin) % static_cast<std::uint64_t>(hostBlock) == 0)
                rate.transportChanged(tempo, beats + static_cast<double>(now - begin) * beatsPerSample());
        });
    }
    double beatsPerSample() const { return static_cast<double>(tempo) / 60.0 / environment.sampleRate(); }
    std::vector<float> play(int samples, int block = 128) { return render(xlfo, samples, block); }

    static std::function<float(std::uint64_t)> reading(const float& value)
    {
        return [&value](std::uint64_t) { return value; };
    }

    Shape shape;
    float hertz = 1.0f;
    float addedGlide = 0.0f;
    float shift = 0.0f;  // phase offset
    float tempo = 120.0f;
    FunctionProducer frequency{environment, reading(hertz)};
    FunctionProducer glide{environment, reading(addedGlide)};
    FunctionProducer offset{environment, reading(shift)};
    XLFO xlfo{environment, 1u};
    XLFOFreqController rate{environment, xlfo, frequency};
};
