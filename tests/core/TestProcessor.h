#pragma once

#include "core/GenericPluginProcessor.h"
#include "parameters/FloatPluginParameter.h"

#include <string>
#include <utility>
#include <vector>

/// The smallest effect: two channels times a gain, one parameter, a bypass control, and a latency on request.
class TestProcessor : public GenericPluginProcessor {
public:
    explicit TestProcessor(int latency = 0, int tail = -1) : tailSamples(tail)
    {
        category = Delay;
        code = "Test";
        createEngine();
        bypassParameter = &bypass;
        for (int c = 0; c < 2; ++c) {
            channels.push_back(std::make_unique<ProcessorChannel>(environment, *this));
            wets.push_back(std::make_unique<Wet>(environment, *this, channels.back()->mainInput));
            channels.back()->output = wets.back().get();
        }
        if (latency > 0)
            setLatency(latency);
    }
    ~TestProcessor() override { environment.markDestroying(); }

    /// Renders `in` on both channels, `block` samples a call, and returns the first one.
    std::vector<float> play(const std::vector<float>& in, int block = 512, unsigned statusIn = 0)
    {
        std::vector<float> left(in.size()), right(in.size());
        for (std::size_t i = 0; i < in.size(); i += static_cast<std::size_t>(block)) {
            const float* inputs[] = {in.data() + i, in.data() + i};
            float* outputs[] = {left.data() + i, right.data() + i};
            status = statusIn;
            process(inputs, 2, outputs, 2, std::min(block, static_cast<int>(in.size() - i)), status);
        }
        return left;
    }

    void noteOn(int key, float) noexcept override
    {
        log.push_back({'m', key});
        if (gainByMidi)
            gain.setValue(0.25f, noEcho);
    }
    int tailLength() const noexcept override { return tailSamples; }

    FloatPluginParameter gain{this, "Gain"};
    IndexedPluginParameter<bool> bypass{this, "Bypass"};
    std::vector<std::pair<char, int>>
        log;  // 'e' engine runs with their lengths, 'm' notes, 'p' applied parameters
    bool gainByMidi = false;
    float wetGain = 1.0f;
    unsigned status = 0;

protected:
    void parameterApplied(int index) noexcept override
    {
        GenericPluginProcessor::parameterApplied(index);
        log.push_back({'p', index});
        if (index == gain.index())
            wetGain = gain.currentValue();
    }

private:
    class Wet : public wave::Source {
    public:
        Wet(wave::Environment& environment, TestProcessor& processor, wave::Producer& source)
            : Source(environment), owner(processor), input(source)
        {}

    protected:
        void generate(wave::Block* block, int count, int) noexcept override
        {
            if (this == owner.wets.front().get())
                owner.log.push_back({'e', count});
            const wave::Block& in = input.pull(count);
            for (int i = 0; i < count; ++i)
                (*block)[i] = in[i] * owner.wetGain;
        }

    private:
        TestProcessor& owner;
        wave::Producer& input;
    };

    int tailSamples;
    std::vector<std::unique_ptr<Wet>> wets;
};
