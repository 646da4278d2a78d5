#pragma once

// The loop of the state-variable filter, for the sources that build it for one kind of processor each. It
// calls nothing that other sources share, since that might be built for another kind.
#include "dsp/StateVariableKernel.h"
#include "foundation/Float8.h"

inline namespace SORDELIN_VECTOR_VARIANT {

class StateVariableLoop {
public:
    using Job = StateVariableKernel::Job;
    static constexpr int lanes = StateVariableKernel::lanes;

    static void run(const Job& job, int count) noexcept REALTIME
    {
        interleave(job, count);
        const Job* const jobs[] = {&job};
        chooseStages<1>(jobs, count);
        deinterleave(job, count);
    }

    static void runInSeries(const Job& first, const Job& second, int count) noexcept REALTIME
    {
        if (first.stages != second.stages) {
            run(first, count);
            run(second, count);
            return;
        }
        interleave(first, count);
        const Job* const jobs[] = {&first, &second};
        chooseStages<2>(jobs, count);
        deinterleave(first, count);
        deinterleave(second, count);
    }

private:
    using Coefficients = StateVariableKernel::Coefficients;

    // Eight samples at a time: the first four in the lower half, the next ones in the upper.

    static void interleave(const Job& job, int count) noexcept REALTIME
    {
        for (int i = 0; i < count; i += Float8::width) {
            Float8 rows[lanes];
            for (int lane = 0; lane < lanes; ++lane)
                rows[lane] = Float8::load(job.inputs[lane] + i);
            transpose(rows[0], rows[1], rows[2], rows[3]);
            float* const out = job.scratch + lanes * i;
            for (int sample = 0; sample < lanes; ++sample) {
                rows[sample].lower().store(out + lanes * sample);
                rows[sample].upper().store(out + lanes * (sample + lanes));
            }
        }
    }

    static void deinterleave(const Job& job, int count) noexcept REALTIME
    {
        for (int i = 0; i < count; i += Float8::width) {
            const float* const in = job.scratch + lanes * i;
            Float8 columns[lanes];
            for (int sample = 0; sample < lanes; ++sample)
                columns[sample] =
                    Float8(Float4::load(in + lanes * sample), Float4::load(in + lanes * (sample + lanes)));
            transpose(columns[0], columns[1], columns[2], columns[3]);
            for (int lane = 0; lane < lanes; ++lane)
                columns[lane].store(job.outputs[lane] + i);
        }
    }

    template <int filters>
    static void chooseStages(const Job* const (&jobs)[filters], int count) noexcept REALTIME
    {
        if (jobs[0]->stages == 1)
            chooseResponse<filters, 1>(jobs, count);
        else if (jobs[0]->stages == 2)
            chooseResponse<filters, 2>(jobs, count);
        else
            chooseResponse<filters, 4>(jobs, count);
    }

    /// Low-passes, which most filters are, have nothing to mix.
    template <int filters, int stages>
    static void chooseResponse(const Job* const (&jobs)[filters], int count) noexcept REALTIME
    {
        bool lowPass = true;
        for (const Job* job : jobs)
            lowPass = lowPass && job->mix.low == 1.0f && job->mix.band == 0.0f && job->mix.high == 0.0f;
        if (lowPass)
            runSegments<filters, stages, true>(jobs, count);
        else
            runSegments<filters, stages, false>(jobs, count);
    }

    /// Goes on to where the coefficients of any filter change, again and again.
    template <int filters, int stages, bool lowPass>
    static void runSegments(const Job* const (&jobs)[filters], int count) noexcept REALTIME
    {
        const Coefficients* segments[filters];
        const int* lengths[filters];
        int left[filters];
        float* samples[filters];
        for (int n = 0; n < filters; ++n) {
            segments[n] = jobs[n]->segments;
            lengths[n] = jobs[n]->segmentLengths;
            left[n] = *lengths[n];
            samples[n] = jobs[n]->scratch;
        }
        while (count > 0) {
            int length = left[0];
            for (int n = 1; n < filters; ++n)
                length = left[n] < length ? left[n] : length;
            Chain<filters, stages, lowPass>(jobs, segments).run(samples, length);
            count -= length;
            for (int n = 0; n < filters; ++n) {
                samples[n] += lanes * length;
                left[n] -= length;
                if (left[n] == 0 && count > 0) {
                    ++segments[n];
                    left[n] = *++lengths[n];
                }
            }
        }
    }

    // One vector holds the four lanes of one filter, or those of two.

    /// Of each filter the four values that `place` finds.
    template <int filters, class F>
    static auto loadEach(F place) noexcept REALTIME
    {
        if constexpr (filters == 1)
            return Float4::load(place(0));
        else
            return Float8(Float4::load(place(0)), Float4::load(place(1)));
    }
    /// The values of one filter.
    template <int n>
    static Float4 part(const Float4& x) noexcept REALTIME
    {
        return x;
    }
    template <int n>
    static Float4 part(const Float8& x) noexcept REALTIME
    {
        return n == 0 ? x.lower() : x.upper();
    }
    /// `a` where the filter's entry in `chosen` is set, else `b`.
    static Float4 choose(const bool* chosen, const Float4& a, const Float4& b) noexcept REALTIME
    {
        return chosen[0] ? a : b;
    }
    static Float8 choose(const bool* chosen, const Float8& a, const Float8& b) noexcept REALTIME
    {
        return {chosen[0] ? a.lower() : b.lower(), chosen[1] ? a.upper() : b.upper()};
    }

    template <class Vector>
    struct Mix {
        Vector low, band, high;
    };

    /// One stage. A round turns the band state b into b + f (x - q b - low - f b) - k b^3, which is
    /// `keep` b + `push` - k b^3 with `push` = f (x - low): so summed up, a round waits for two operations.
    template <class Vector>
    struct Stage {
        Vector q;
        Vector keep;     // 1 - f (f + q)
        Vector fall[2];  // what the first two rounds take off `push`, per band state
        Vector band;
        Vector low;

        void setDamping(const Vector& damping, const Vector& f) noexcept REALTIME
        {
            q = damping;
            const Vector turn = f * (f + q);
            keep = Vector(1.0f) - turn;
            // A 1 takes most digits off a small turn, which is the whole of a low cut-off. Between the rounds
            // `push` loses f^2 b, and with it what those digits were, for all three rounds.
            const Vector lost = turn - (Vector(1.0f) - keep);
            fall[0] = f * f + (lost + lost);
            fall[1] = f * f - lost;
        }

        /// Three rounds with the same input.
        template <bool cubic, bool lowPass>
        Vector step(Vector x, Vector f, Vector k, const Mix<Vector>& mix) noexcept REALTIME
        {
            Vector push = multiplySubtractFrom(f, low, f * x);
            Vector before;
            for (int round = 0; round < 3; ++round) {
                const Vector straight = multiplyAdd(keep, band, push);
                if (round < 2)
                    push = multiplySubtractFrom(fall[round], band, push);
                low = multiplyAdd(f, band, low);
                before = band;
                band = cubic ? multiplySubtractFrom(k * band, band * band, straight) : straight;
            }
            const Vector high = multiplySubtractFrom(q, before, x) - low;
            band = clamp(band, Vector(-1.0f), Vector(1.0f));
            low = clamp(low, Vector(-10.0f), Vector(10.0f));
            if constexpr (lowPass)
                return low;
            return multiplyAdd(mix.band, band, multiplyAdd(mix.low, low, mix.high * high));
        }
    };

    static void lookUp(const float* const (&tables)[1], const int* indices, Float4& at,
                       Float4& behind) noexcept REALTIME
    {
        lookUpPairs(tables[0], indices, at, behind);
    }
    static void lookUp(const float* const (&tables)[2], const int* indices, Float8& at,
                       Float8& behind) noexcept REALTIME
    {
        lookUpPairs(tables, indices, at, behind);
    }

    /// Of all ways of getting at single indices, reading them back from memory is the fastest: compilers
    /// would rather take them out of a register one by one.
    template <int size>
    static void keepInMemory([[maybe_unused]] int (&indices)[size]) noexcept REALTIME
    {
#if defined(__GNUC__)
        asm("" : "+m"(indices));
#endif
    }

    /// The clippers of one filter or two.
    template <int filters, class Vector>
    struct Clip {
        Clip(const Job* const (&jobs)[filters],
             const Coefficients* const (&segments)[filters]) noexcept REALTIME
        {
            alignas(16) float values[3][filters][lanes];
            for (int n = 0; n < filters; ++n) {
                const StateVariableKernel::Clipper& clipper = jobs[n]->clipper;
                tables[n] = clipper.values - clipper.first;  // where the curve's place 0 is
                Float4(static_cast<float>(clipper.first)).store(values[0][n]);
                Float4(static_cast<float>(clipper.last)).store(values[1][n]);
                Float4(clipper.offset).store(values[2][n]);
            }
            lowest = loadEach<filters>([&](int n) { return values[0][n]; });
            highest = loadEach<filters>([&](int n) { return values[1][n]; });
            offset = loadEach<filters>([&](int n) { return values[2][n]; });
            inGain = loadEach<filters>([&](int n) { return segments[n]->clipInGain; });
            outGain = loadEach<filters>([&](int n) { return segments[n]->clipOutGain; });
        }
        Vector operator()(const Vector& x) const noexcept REALTIME
        {
            alignas(32) int index[filters * lanes];
            const Vector place = clamp(multiplyAdd(x, inGain, offset), lowest, highest);
            const Vector weight = place - floorTo(place, index);
            keepInMemory(index);
            Vector at, behind;
            lookUp(tables, index, at, behind);
            return multiplyAdd(behind - at, weight, at) * outGain;
        }

        const float* tables[filters];
        Vector lowest, highest, offset, inGain, outGain;
    };

    /// All stages of one filter, or of two in series side by side, with the signal on its way through them.
    /// Each stage is a sample behind the one before it, so that none waits for another, and the second filter
    /// some more behind the first one's clipper, which takes longer than a sample.
    template <int filters, int stages, bool lowPass>
    class Chain {
    public:
        using Vector = decltype(loadEach<filters>([](int) { return static_cast<const float*>(nullptr); }));

        Chain(const Job* const (&chainJobs)[filters],
              const Coefficients* const (&segments)[filters]) noexcept REALTIME : jobs(chainJobs),
                                                                                  clip(chainJobs, segments)
        {
            f = loadEach<filters>([&](int n) { return segments[n]->frequency; });
            k = loadEach<filters>([&](int n) { return segments[n]->cubic; });
            gain = loadEach<filters>([&](int n) { return segments[n]->inputGain; });
            alignas(16) float values[3][filters][lanes];
            for (int n = 0; n < filters; ++n) {
                Float4(chainJobs[n]->mix.low).store(values[0][n]);
                Float4(chainJobs[n]->mix.band).store(values[1][n]);
                Float4(chainJobs[n]->mix.high).store(values[2][n]);
            }
            mix.low = loadEach<filters>([&](int n) { return values[0][n]; });
            mix.band = loadEach<filters>([&](int n) { return values[1][n]; });
            mix.high = loadEach<filters>([&](int n) { return values[2][n]; });
            for (int s = 0; s < stages; ++s) {
                live[s].setDamping(loadEach<filters>([&](int n) { return segments[n]->damping[s]; }), f);
                live[s].band = loadEach<filters>([&](int n) { return chainJobs[n]->states->band[s]; });
                live[s].low = loadEach<filters>([&](int n) { return chainJobs[n]->states->low[s]; });
            }
        }

        /// @param samples  of each filter; the first one's hold the input
        void run(float* const (&samples)[filters], int length) noexcept REALTIME
        {
            const int steps = length + depth - 1;
            int t = 0;
            for (; t < depth - 1 && t < steps; ++t)
                runEdge(samples, length, t);
            runMiddle(samples, t, length);
            for (t = t < length ? length : t; t < steps; ++t)
                runEdge(samples, length, t);
            for (int s = 0; s < stages; ++s) {
                store<0>(s);
                store<filters - 1>(s);
            }
        }

    private:
        static constexpr int lag = stages + 2;                      // steps of the second filter
        static constexpr int depth = stages + (filters - 1) * lag;  // until a sample is through

        template <int n>
        void store(int s) noexcept REALTIME
        {
            part<n>(live[s].band).store(jobs[n]->states->band[s]);
            part<n>(live[s].low).store(jobs[n]->states->low[s]);
        }

        /// What comes into the first stages in step t, read from what the first filter has before and behind
        /// it.
        Vector input(const float* samples, int t) const noexcept REALTIME
        {
            if constexpr (filters == 1)
                return Float4::load(samples + lanes * t) * gain;
            else
                return Float8(Float4::load(samples + lanes * t), Float4::load(samples + lanes * (t - lag))) *
                       gain;
        }
        /// The same where there is no such sample, before the first ones and behind the last.
        Vector edgeInput(const float* samples, int length, int t) const noexcept REALTIME
        {
            const auto sample = [&](int i) {
                return i >= 0 && i < length ? Float4::load(samples + lanes * i) : Float4();
            };
            if constexpr (filters == 1)
                return sample(t) * gain;
            else
                return Float8(sample(t), sample(t - lag)) * gain;
        }
        static Vector step(Stage<Vector>& stage, const Vector& x, int s, const Chain& chain) noexcept REALTIME
        {
            return s == 0 ? stage.template step<true, lowPass>(x, chain.f, chain.k, chain.mix)
                          : stage.template step<false, lowPass>(x, chain.f, chain.k, chain.mix);
        }

        /// The steps in which every stage has a sample. On copies, which stay in registers.
        void runMiddle(float* const (&samples)[filters], int from, int to) noexcept REALTIME
        {
            const Chain chain = *this;
            Stage<Vector> stage[stages];
            Vector pipe[stages];
            for (int s = 0; s < stages; ++s) {
                stage[s] = live[s];
                pipe[s] = passing[s];
            }
            float* out = samples[0];
            float* secondOut = samples[filters - 1];
            for (int t = from; t < to; ++t) {
                const Vector first = chain.input(out, t);
                for (int s = stages - 1; s >= 0; --s)
                    pipe[s] = step(stage[s], s == 0 ? first : pipe[s - 1], s, chain);
                const Vector x = chain.clip(pipe[stages - 1]);
                part<0>(x).store(out + lanes * (t - (stages - 1)));
                if constexpr (filters == 2)
                    part<1>(x).store(secondOut + lanes * (t - (depth - 1)));
            }
            for (int s = 0; s < stages; ++s) {
                live[s] = stage[s];
                passing[s] = pipe[s];
            }
        }

        /// A step in which the first samples have not come to the last stages, or the last ones have left the
        /// first stages: those stand still.
        void runEdge(float* const (&samples)[filters], int length, int t) noexcept REALTIME
        {
            const Vector first = edgeInput(samples[0], length, t);
            for (int s = stages - 1; s >= 0; --s) {
                bool busy[filters];
                for (int n = 0; n < filters; ++n) {
                    const int sample = t - s - n * lag;
                    busy[n] = sample >= 0 && sample < length;
                }
                const Stage<Vector> before = live[s];
                passing[s] = step(live[s], s == 0 ? first : passing[s - 1], s, *this);
                live[s].band = choose(busy, live[s].band, before.band);
                live[s].low = choose(busy, live[s].low, before.low);
                if (s < stages - 1)
                    continue;
                const Vector x = clip(passing[s]);
                if (busy[0])
                    part<0>(x).store(samples[0] + lanes * (t - s));
                if constexpr (filters == 2) {
                    if (busy[1])
                        part<1>(x).store(samples[1] + lanes * (t - (depth - 1)));
                }
            }
        }

        const Job* const (&jobs)[filters];
        Clip<filters, Vector> clip;
        Vector f, k, gain;
        Mix<Vector> mix;
        Stage<Vector> live[stages];
        Vector passing[stages];  // behind each stage
    };
};

}  // namespace SORDELIN_VECTOR_VARIANT
