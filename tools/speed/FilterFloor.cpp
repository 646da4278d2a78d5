#include "speed/FilterFloor.h"

#include "foundation/FloatingPointScope.h"
#include "speed/FilterFloorLoop.h"
#include "speed/SpeedSubject.h"

#if defined(SORDELIN_WIDE_FLOOR)
#include "speed/FilterFloorWide.h"
#endif

namespace {

constexpr int block = 128;
constexpr int lanes = 4;

/// Fills a block with a saw of four lanes before each run, as cheap as a signal can come in.
class FloorSignal {
public:
    FloorSignal()
    {
        for (int i = 0; i < block * lanes; ++i)
            saw[i] = static_cast<float>(i % 100) / 200.0f - 0.25f;
    }
    float* next() noexcept
    {
        for (int i = 0; i < block * lanes; i += Float4::width)
            Float4::load(saw + i).store(samples + i);
        return samples;
    }

private:
    alignas(16) float saw[block * lanes];
    alignas(16) float samples[block * lanes];
};

class FilterFloor : public SpeedSubject {
public:
    FilterFloor() : SpeedSubject("both filters' bare loops, four lanes") {}
    void playStretch() override
    {
        const FloatingPointScope scope;
        for (std::int64_t done = 0; done < stretchFrames; done += block) {
            float* const samples = signal.next();
            for (auto& loop : loops)
                loop.run(
                    block, [&](int i) { return Float4::load(samples + lanes * i); },
                    [&](int i, const Float4& out) { out.store(samples + lanes * i); });
        }
    }

private:
    FloorSignal signal;
    FilterFloorLoop<Float4> loops[2];
};

#if defined(SORDELIN_WIDE_FLOOR)
class WideFilterFloor : public SpeedSubject {
public:
    WideFilterFloor() : SpeedSubject("the same side by side, AVX2 and FMA") {}
    void playStretch() override
    {
        const FloatingPointScope scope;
        for (std::int64_t done = 0; done < stretchFrames; done += block)
            runWideFilterFloor(signal.next(), block);
    }

private:
    FloorSignal signal;
};
#endif

}  // namespace

std::unique_ptr<SpeedSubject> makeFilterFloor() { return std::make_unique<FilterFloor>(); }

std::unique_ptr<SpeedSubject> makeWideFilterFloor()
{
#if defined(SORDELIN_WIDE_FLOOR)
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"))
        return std::make_unique<WideFilterFloor>();
#endif
    return nullptr;
}
