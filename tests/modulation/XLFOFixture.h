#pragma once

#include "modulation/XLFO.h"
#include "modulation/XLFOFreqController.h"
#include "support/GraphFixture.h"

#include <cmath>
#include <vector>

/// An XLFO with its rate, whose signals a test gives as functions of time, and what it should play.
struct XLFOFixture : GraphFixture {
    struct Shape {
        struct Step {
            double value = 0.0;
            double glide = 0.0;
            XLFO::GlideCurve curve = XLFO::GlideCurve::Linear;
        };

        /// The output at a phase: steps are even on a scale on which the balance point is the middle.
        double at(double phase, double hertz = 0.0) const
        {
            const double count = static_cast<double>(steps.size());
            const double centre = balance;
            phase -= std::floor(phase);
            const double place = phase < centre ? phase / centre * count / 2.0
                                                : (1.0 + (phase - centre) / (1.0 - centre)) * count / 2.0;
            const auto index = std::min(static_cast<std::size_t>(place), steps.size() - 1);
            const Step& step = steps[index];
            const double next = steps[(index + 1) % steps.size()].value;
            const double floor = hertz * 0.0002 * (hertz * 0.0002);
            const double glide = std::min(std::max(step.glide + addedGlide, floor), 1.0);
            const double x = (place - static_cast<double>(index) - 1.0) / glide + 1.0;
            return x > 0.0 ? step.value + (next - step.value) * curved(step.curve, x) : step.value;
        }
        static double curved(XLFO::GlideCurve curve, double x)
        {
            switch (curve) {
            case XLFO::GlideCurve::Square:
                return x * x;
            case XLFO::GlideCurve::SquareRoot:
                return std::sqrt(x);
            case XLFO::GlideCurve::Sine:
                return 0.5 - 0.5 * std::cos(x * 3.141592653589793);
            default:
                return x;
            }
        }

        std::vector<Step> steps;
        float balance = 0.5f;
        double addedGlide = 0.0;
    };

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
