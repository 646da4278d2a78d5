#include "FilterModel.h"
#include "PlainKernel.h"
#include "dsp/FilterStyles.h"
#include "dsp/MultiDesignFilter.h"
#include "support/GraphFixture.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <memory>
#include <optional>

namespace {

const StateVariableTables& tables()
{
    static const StateVariableTables shared;
    return shared;
}

const FilterStyles& styles()
{
    static const FilterStyles shared;
    return shared;
}

constexpr int clean = 10;

/// A filter that plays a signal, shaped by functions of time.
struct FilterFixture : GraphFixture {
    FilterFixture(float rate, int characteristic)
    {
        environment.setSampleRate(rate);
        design = std::make_unique<DesignFilter>(environment, tables(), styles().at(0));
        filter = std::make_unique<MultiDesignFilter>(environment, *design, styles());
        filter->characteristic.assign(characteristic);
        filter->frequency.connect(&frequency);
        filter->peak.connect(&peak);
        filter->input = &source;
    }
    std::vector<float> play(std::vector<float> signal, int block = 128)
    {
        in = std::move(signal);
        start = environment.now();
        return render(*filter, static_cast<int>(in.size()), block);
    }

    std::vector<float> in;
    std::uint64_t start = 0;
    std::function<float(std::uint64_t)> log2Hz = [](std::uint64_t) { return 10.0f; };
    std::function<float(std::uint64_t)> peakAt = [](std::uint64_t) { return 0.0f; };
    FunctionProducer source{environment, [this](std::uint64_t t) { return in[t - start]; }};
    FunctionProducer frequency{environment, [this](std::uint64_t t) { return log2Hz(t - start); }};
    FunctionProducer peak{environment, [this](std::uint64_t t) { return peakAt(t - start); }};
    std::unique_ptr<DesignFilter> design;
    std::unique_ptr<MultiDesignFilter> filter;
};

/// The same through the model, with coefficients that change at the filter's segments: each begins with its
/// sub-block, or where the last one reached 32 samples, a tenth of an octave, or 0.0002 of peak.
std::vector<float> modelled(const FilterFixture& fixture, const std::vector<float>& in, int characteristic,
                            FilterResponse response, FilterSlope slope)
{
    const DesignFilterStyle& style = styles().at(characteristic);
    const double rate = fixture.environment.sampleRate();
    FilterModel model({rate, response, slope, style.asymmetry(), style.gain()});
    std::vector<float> out;
    std::size_t segment = 0;
    for (std::size_t i = 0; i < in.size(); ++i) {
        const float frequency = fixture.log2Hz(i);
        const float peak = fixture.peakAt(i);
        const bool moved = std::fabs(frequency - fixture.log2Hz(segment)) > 0.1f ||
                           std::fabs(peak - fixture.peakAt(segment)) > 0.0002f;
        if (i % 128 == 0 || i - segment == 32 || moved) {
            segment = i;
            double held = peak;
            if (slope != FilterSlope::Db12 && response != FilterResponse::LowPass)
                held = std::min(held, FilterModel::peakLimit(frequency - std::log2(rate)));
            const auto found = style.characteristicAt(frequency, static_cast<float>(held));
            model.set(frequency, held, found.resonance, found.cubic, found.clipDrive);
        }
        out.push_back(static_cast<float>(model.step(in[i])));
    }
    return out;
}

/// The magnitude of an impulse response at a frequency, in dB.
double magnitudeDb(const std::vector<float>& response, double hz, double rate)
{
    std::complex<double> sum = 0.0;
    for (std::size_t i = 0; i < response.size(); ++i)
        sum += static_cast<double>(response[i]) *
               std::polar(1.0, -2.0 * std::numbers::pi * hz * static_cast<double>(i) / rate);
    return 20.0 * std::log10(std::abs(sum));
}

}  // namespace

TEST(Filter, FollowsItsDifferenceEquationsInEveryCharacteristic)
{
    for (int characteristic = 0; characteristic < 10; ++characteristic) {
        for (auto response : {FilterResponse::LowPass, FilterResponse::HighPass, FilterResponse::BandPass}) {
            for (auto slope : {FilterSlope::Db12, FilterSlope::Db24, FilterSlope::Db48}) {
                const float rate = characteristic % 3 == 0   ? 44100.0f
                                   : characteristic % 3 == 1 ? 48000.0f
                                                             : 96000.0f;
                FilterFixture fixture(rate, characteristic);
                fixture.filter->response.assign(response);
                fixture.filter->slope.assign(slope);
                fixture.peakAt = [](std::uint64_t) { return 0.25f; };
                std::vector<float> in = signals::noise(48000, 40);
                for (float& sample : in)
                    sample *= 0.2f;
                const std::vector<float> out = fixture.play(in);
                const std::vector<float> expected = modelled(fixture, in, characteristic, response, slope);
                EXPECT_LT(signals::largestDifference(out, expected), 2e-4)
                    << characteristic << " " << static_cast<int>(response) << " " << static_cast<int>(slope);
                EXPECT_GT(signals::rms(out, 24000, 48000), 1e-3);
            }
        }
    }
}

TEST(Filter, SoundsTheSameOnEveryKindOfProcessor)
{
    const StateVariableKernel* kernels[] = {&plainKernel(), &StateVariableKernel::common(),
                                            &StateVariableKernel::best()};
    for (auto response : {FilterResponse::LowPass, FilterResponse::HighPass, FilterResponse::BandPass}) {
        for (auto slope : {FilterSlope::Db12, FilterSlope::Db24, FilterSlope::Db48}) {
            std::vector<float> outputs[3];
            for (std::size_t i = 0; i < 3; ++i) {
                FilterFixture fixture(48000.0f, 1);
                fixture.design->useKernel(*kernels[i]);
                fixture.filter->response.assign(response);
                fixture.filter->slope.assign(slope);
                fixture.peakAt = [](std::uint64_t) { return 0.25f; };
                fixture.log2Hz = [](std::uint64_t t) {
                    return 10.0f + std::sin(static_cast<float>(t) * 0.003f);
                };
                // Loud enough to reach both ends of the clipper, in blocks that end between whole groups.
                outputs[i] = fixture.play(signals::noise(24000, 41), 127);
            }
            EXPECT_EQ(signals::largestDifference(outputs[0], outputs[1]), 0.0);
            EXPECT_LT(signals::largestDifference(outputs[1], outputs[2]), 2e-4) << kernels[2]->name;
            EXPECT_GT(signals::rms(outputs[1], 12000, 24000), 1e-3);
        }
    }
}

TEST(Filter, FollowsASweepOfFrequencyAndPeak)
{
    for (int characteristic : {0, 1, 5}) {
        FilterFixture fixture(48000.0f, characteristic);
        fixture.log2Hz = [](std::uint64_t t) {
            return 9.0f + 2.0f * std::sin(static_cast<float>(t) * 0.0003f);
        };
        fixture.peakAt = [](std::uint64_t t) {
            return 0.15f + 0.1f * std::sin(static_cast<float>(t) * 0.001f);
        };
        std::vector<float> in = signals::noise(96000, 41);
        for (float& sample : in)
            sample *= 0.2f;
        const std::vector<float> out = fixture.play(in);
        const std::vector<float> expected =
            modelled(fixture, in, characteristic, FilterResponse::LowPass, FilterSlope::Db12);
        EXPECT_LT(signals::largestDifference(out, expected), 5e-4) << characteristic;
    }
}

// atan(x) reaches -pi/2 below and pi/(2a) above; outside, both are divided by drive and gain. The lowest
// drive is 0.1.
TEST(Filter, StaysBoundedWhateverComes)
{
    using Limits = std::numeric_limits<float>;
    for (int characteristic = 0; characteristic < 10; ++characteristic) {
        const DesignFilterStyle& style = styles().at(characteristic);
        const double ceiling =
            std::numbers::pi / 2.0 / std::min(style.asymmetry(), 1.0f) / (0.1 * style.gain());
        for (auto slope : {FilterSlope::Db12, FilterSlope::Db48}) {
            FilterFixture fixture(44100.0f, characteristic);
            fixture.filter->slope.assign(slope);
            const std::vector<float> wild = signals::noise(96000, 42);
            const std::vector<float> wildPeak = signals::noise(96000, 43);
            fixture.log2Hz = [&](std::uint64_t t) { return 9.0f + 7.0f * wild[t]; };
            fixture.peakAt = [&](std::uint64_t t) { return std::fabs(wildPeak[t]); };
            std::vector<float> in = signals::noise(96000, 44);
            for (std::size_t i = 0; i < in.size(); ++i)
                in[i] = i % 5000 == 7   ? Limits::quiet_NaN()
                        : i % 5000 == 9 ? Limits::infinity()
                                        : 100.0f * in[i];
            for (float sample : fixture.play(in))
                ASSERT_TRUE(std::fabs(sample) <= ceiling) << characteristic;
        }
    }
}

TEST(Filter, SingsAtItsCutOffWhereTheResonanceIsAboveOneAndNeverWhenGentle)
{
    for (const auto& [characteristic, sings] :
         {std::pair(0, true), std::pair(7, true), std::pair(1, false)}) {
        FilterFixture fixture(44100.0f, characteristic);
        fixture.log2Hz = [](std::uint64_t) { return std::log2(110.0f); };
        fixture.peakAt = [](std::uint64_t) { return 1.0f; };
        const std::vector<float> out = fixture.play(signals::impulse(44100 * 10));
        const double level = signals::rms(out, 44100 * 9, 44100 * 10);
        EXPECT_EQ(level > 0.01, sings) << characteristic << " rings at " << level;
        if (sings) {
            EXPECT_NEAR(signals::meanFrequency(out, 44100 * 9, 44100 * 10, 44100.0), 110.0,
                        30.0);  // the cubic term pulls it down
        }
    }
}

TEST(CleanFilter, IsItsAnalogPrototypeAtTheWarpedFrequency)
{
    struct Row {
        FilterResponse response;
        FilterSlope slope;
        float peak;
    };
    for (const auto& [response, slope, peak] : {Row{FilterResponse::LowPass, FilterSlope::Db12, 0.0f},
                                                Row{FilterResponse::LowPass, FilterSlope::Db24, 0.9f},
                                                Row{FilterResponse::HighPass, FilterSlope::Db48, 0.5f},
                                                Row{FilterResponse::BandPass, FilterSlope::Db12, 0.5f},
                                                Row{FilterResponse::BandPass, FilterSlope::Db48, 1.0f}}) {
        for (float rate : {44100.0f, 48000.0f, 96000.0f}) {
            FilterFixture fixture(rate, clean);
            fixture.filter->response.assign(response);
            fixture.filter->slope.assign(slope);
            fixture.peakAt = [held = peak](std::uint64_t) { return held; };
            fixture.log2Hz = [](std::uint64_t) { return std::log2(1000.0f); };
            const std::vector<float> out = fixture.play(signals::impulse(65536));
            const int stages = slope == FilterSlope::Db48 ? 4 : slope == FilterSlope::Db24 ? 2 : 1;
            for (double hz : {100.0, 500.0, 999.0, 1001.0, 2000.0, 8000.0}) {
                const double w =
                    std::tan(std::numbers::pi * hz / rate) / std::tan(std::numbers::pi * 1000.0 / rate);
                const std::complex<double> s(0.0, w);
                double expected = 0.0;
                for (int stage = 0; stage < stages; ++stage) {
                    const double p = stage == 0 ? peak : std::min<double>(peak, 0.8);
                    const bool bandPass = response == FilterResponse::BandPass;
                    const double q = bandPass ? 2.0 / (2.0 - peak) : 1.0 / (1.4142135 - 1.3942136 * p);
                    const std::complex<double> top = response == FilterResponse::LowPass ? 1.0
                                                     : bandPass                          ? s / q
                                                                                         : s * s;
                    expected += 20.0 * std::log10(std::abs(top / (s * s + s / q + 1.0)));
                }
                if (expected > -100.0) {
                    EXPECT_NEAR(magnitudeDb(out, hz, rate), expected, 0.02) << hz << " Hz at " << rate;
                }
            }
        }
    }
}

TEST(GenericFilter, CostsNothingWhenBlendedOutAndBlendsInBetween)
{
    FilterFixture fixture(44100.0f, 1);
    fixture.filter->mix.parameter().setValue(0.0f, 0.0f);
    fixture.play(signals::noise(256, 45));
    EXPECT_EQ(&fixture.filter->currentBlock(), &fixture.source.currentBlock());

    // A mix of a half: the mean of what goes in and of what another filter alone gives.
    FilterFixture half(44100.0f, 1), whole(44100.0f, 1);
    half.filter->mix.parameter().setValue(0.5f, 0.0f);
    const std::vector<float> in = signals::noise(1000, 46);
    const std::vector<float> blended = half.play(in);
    const std::vector<float> filtered = whole.play(in);
    for (std::size_t i = 0; i < in.size(); ++i)
        ASSERT_NEAR(blended[i], 0.5 * (in[i] + filtered[i]), 1e-6);
}

TEST(ParallelFilterUnit, KeepsItsLanesApart)
{
    // Four filters on four signals in one unit give what each gives alone.
    wave::Environment environment;
    DesignFilter shared(environment, tables(), styles().at(3));
    std::vector<std::unique_ptr<MultiDesignFilter>> filters;
    std::vector<std::unique_ptr<FunctionProducer>> sources, frequencies;
    for (unsigned lane = 0; lane < 4; ++lane) {
        sources.push_back(
            std::make_unique<FunctionProducer>(environment, playing(signals::noise(2048, 50 + lane))));
        frequencies.push_back(std::make_unique<FunctionProducer>(
            environment, [lane](std::uint64_t) { return 8.0f + static_cast<float>(lane); }));
        filters.push_back(std::make_unique<MultiDesignFilter>(environment, shared, styles()));
        filters.back()->characteristic.assign(3);
        filters.back()->input = sources.back().get();
        filters.back()->frequency.connect(frequencies.back().get());
    }
    std::vector<float> together[4];
    for (int block = 0; block < 16; ++block) {
        environment.nextGeneration();
        for (int lane = 3; lane >= 0; --lane) {
            const wave::Block& out = filters[static_cast<std::size_t>(lane)]->pull(128);
            together[lane].insert(together[lane].end(), out.data(), out.data() + 128);
        }
        environment.run(128, false);
    }
    for (unsigned lane = 0; lane < 4; ++lane) {
        FilterFixture alone(44100.0f, 3);
        alone.log2Hz = [lane](std::uint64_t) { return 8.0f + static_cast<float>(lane); };
        EXPECT_EQ(alone.play(signals::noise(2048, 50 + lane)), together[lane]) << lane;
    }
}

namespace {

/// Two filters in series on two lanes each, run at once or one after the other.
struct SeriesFixture : GraphFixture {
    SeriesFixture(const StateVariableKernel& kernel, bool atOnce)
    {
        environment.setSampleRate(48000.0f);
        for (std::size_t number = 0; number < 2; ++number) {
            shared[number] = std::make_unique<DesignFilter>(environment, tables(), styles().at(0));
            shared[number]->useKernel(kernel);
            for (std::size_t lane = 0; lane < 2; ++lane) {
                auto& filter = filters[number][lane];
                filter = std::make_unique<MultiDesignFilter>(environment, *shared[number], styles());
                filter->characteristic.assign(number == 0 ? 1 : 4);
                filter->frequency.connect(&frequencies[number]);
                filter->peak.assign(0.3f);
                filter->input =
                    number == 0 ? static_cast<wave::Producer*>(&sources[lane]) : filters[0][lane].get();
            }
        }
        if (atOnce)
            shared[1]->follow(*shared[0]);
    }
    void setSlopes(FilterSlope first, FilterSlope second)
    {
        for (std::size_t lane = 0; lane < 2; ++lane) {
            filters[0][lane]->slope.assign(first);
            filters[1][lane]->slope.assign(second);
        }
    }
    void setMix(std::size_t number, float mix)
    {
        for (auto& filter : filters[number])
            filter->mix.assign(mix);
    }

    FunctionProducer sources[2]{{environment, playing(signals::noise(24000, 60))},
                                {environment, playing(signals::noise(24000, 61))}};
    // Their coefficients change at different samples.
    FunctionProducer frequencies[2]{
        {environment, [](std::uint64_t t) { return 10.0f + std::sin(static_cast<float>(t) * 0.004f); }},
        {environment, [](std::uint64_t t) { return 11.0f + std::sin(static_cast<float>(t) * 0.0013f); }}};
    std::unique_ptr<DesignFilter> shared[2];
    std::unique_ptr<MultiDesignFilter> filters[2][2];
};

}  // namespace

TEST(StateVariableFilter, GivesTheSameWhetherItRunsBesideTheOneBeforeItOrBehindIt)
{
    const FilterSlope slopes[] = {FilterSlope::Db12, FilterSlope::Db24, FilterSlope::Db48};
    for (const auto* kernel :
         {&plainKernel(), &StateVariableKernel::common(), &StateVariableKernel::best()}) {
        SeriesFixture atOnce(*kernel, true), inTurn(*kernel, false);
        int block = 0;
        const auto play = [&block](SeriesFixture& fixture, FilterSlope first, FilterSlope second) {
            fixture.setSlopes(first, second);
            return fixture.render(*fixture.filters[1][1], 640, 1 + block % 128, [&](std::uint64_t t) {
                // One of them is off for a while, and fades out and in on the way.
                fixture.setMix(t / 960 % 2, t % 1920 < 480 ? 0.0f : 1.0f);
            });
        };
        for (int round = 0; round < 2; ++round) {
            for (const FilterSlope first : slopes) {
                for (const FilterSlope second : slopes) {
                    block = round == 0 ? 127 : block + 37;  // whole ones first, at the ends of the memory
                    const auto expected = play(inTurn, first, second);
                    EXPECT_EQ(play(atOnce, first, second), expected) << kernel->name << " " << block;
                    EXPECT_GT(signals::rms(expected, 0, 640), 1e-3);
                }
            }
        }
    }
}
