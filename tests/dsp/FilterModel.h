#pragma once

#include "dsp/FilterTypes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>
#include <vector>

/// The state-variable filter in double precision, straight from its difference equations, one sample at a
/// time.
struct FilterModel {
    struct Settings {
        double sampleRate = 44100.0;
        FilterResponse response = FilterResponse::LowPass;
        FilterSlope slope = FilterSlope::Db12;
        double asymmetry = 1.0;
        double styleGain = 1.0;
    };
    /// A function known at even steps and on straight lines between, as the filter knows it.
    struct Sampled {
        template <class F>
        Sampled(int entries, double from, double to, F f) : low(from), step((to - from) / (entries - 1))
        {
            for (int i = 0; i < entries; ++i)
                values.push_back(f(low + i * step));
        }
        double operator()(double x) const
        {
            const double place = std::clamp((x - low) / step, 0.0, static_cast<double>(values.size() - 1));
            const auto i = std::min(static_cast<std::size_t>(place), values.size() - 2);
            return values[i] + (values[i + 1] - values[i]) * (place - static_cast<double>(i));
        }
        double low, step;
        std::vector<double> values;
    };

    explicit FilterModel(const Settings& modelSettings)
        : settings(modelSettings), clip(8192, -40.0, 40.00976800976801, [this](double x) {
              return x < 0.0 ? std::atan(x) : std::atan(settings.asymmetry * x) / settings.asymmetry;
          })
    {}

    /// Sets what the following samples are filtered with.
    /// @param resonance, cubicTerm, clipDrive  of the characteristic at these settings
    void set(double log2Hz, double peak, double resonance, double cubicTerm, double clipDrive)
    {
        const double relative = log2Hz - std::log2(settings.sampleRate);
        const double coefficient = frequencyTable()(relative);
        cubic = cubicTerm;
        if (settings.sampleRate > 44100.0)
            cubic *= coefficient / frequencyTable()(log2Hz - std::log2(44100.0));
        f = std::min(coefficient, 0.95);
        drive = clipDrive;
        damping[0] = std::min(dampingTable()(resonance), limit(f));
        for (int stage = 1; stage < 4; ++stage)
            damping[static_cast<std::size_t>(stage)] =
                std::min(dampingTable()((4 - stage) * 0.035 * peak), stage == 1 ? secondLimit(f) : limit(f));
    }
    /// How far the peak may go where a slope is steep and not a low-pass.
    static double peakLimit(double relative)
    {
        static const Sampled table(512, -30, 20, [](double x) {
            return interpolate({{-1.5, 1.0}, {-1.32, 0.085}, {-0.5, 0.04}, {0.4, 0.001}}, x);
        });
        return table(relative);
    }

    double step(double input)
    {
        double x = input * settings.styleGain;
        const int stages = settings.slope == FilterSlope::Db48   ? 4
                           : settings.slope == FilterSlope::Db24 ? 2
                                                                 : 1;
        for (int stage = 0; stage < stages; ++stage) {
            double& b = band[static_cast<std::size_t>(stage)];
            double& l = low[static_cast<std::size_t>(stage)];
            const double k = stage == 0 ? cubic : 0.0;
            const double q = damping[static_cast<std::size_t>(stage)];
            double high = 0.0;
            for (int round = 0; round < 3; ++round) {
                l += f * b;
                high = x - q * b - l;
                b += high * f - k * b * b * b;
            }
            b = std::clamp(b, -1.0, 1.0);
            l = std::clamp(l, -10.0, 10.0);
            x = settings.response == FilterResponse::LowPass    ? l
                : settings.response == FilterResponse::HighPass ? high
                                                                : b;
        }
        return clip(x * drive) / (drive * settings.styleGain);
    }

    static double interpolate(const std::vector<std::pair<double, double>>& points, double x)
    {
        if (x <= points.front().first)
            return points.front().second;
        for (std::size_t i = 1; i < points.size(); ++i) {
            if (x <= points[i].first)
                return std::lerp(points[i - 1].second, points[i].second,
                                 (x - points[i - 1].first) / (points[i].first - points[i - 1].first));
        }
        return points.back().second;
    }
    static const Sampled& frequencyTable()
    {
        static const Sampled table(8192, -30, 20, [](double x) {
            return 2.0 * std::sin(std::min(std::exp2(x), 1.0) * std::numbers::pi / 3.0);
        });
        return table;
    }
    static const Sampled& dampingTable()
    {
        static const Sampled table(4096, 0, 5, [](double x) { return 2.0 * (1.0 - std::pow(x, 0.25)); });
        return table;
    }
    static double limit(double coefficient)
    {
        static const Sampled table(256, 0, 1,
                                   [](double x) { return x <= 0.01 ? 2.0 : std::min(2.0 / x - x, 2.0); });
        return table(coefficient);
    }
    static double secondLimit(double coefficient)
    {
        static const Sampled table(256, 0, 1, [](double x) {
            return interpolate({{0.0, 2.0},
                                {0.55, 2.0},
                                {0.6, 1.67},
                                {0.65, 1.4},
                                {0.7, 1.0},
                                {0.75, 0.8},
                                {0.8, 0.77},
                                {0.85, 0.73},
                                {0.9, 0.7},
                                {0.95, 0.65}},
                               x);
        });
        return table(coefficient);
    }

    Settings settings;
    Sampled clip;
    double f = 0.0;
    double cubic = 0.0;
    double drive = 0.1;
    std::array<double, 4> damping{};
    std::array<double, 4> band{};
    std::array<double, 4> low{};
};
