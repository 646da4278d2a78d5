#include "voicing/FilterProbe.h"

#include "foundation/FloatingPointScope.h"

#include <algorithm>
#include <cmath>

/// Plays what it is given, block by block.
class FilterProbe::Player : public wave::Source {
public:
    using Source::Source;

    const float* next = nullptr;

protected:
    void generate(wave::Block* block, int count, int) noexcept REALTIME override
    {
        std::copy_n(next, count, block->data());
        block->setConstant(false);
        next += count;
    }
};

FilterProbe::FilterProbe(const DesignFilterStyle& style, const StateVariableTables& tables,
                         const Setting& setting)
    : player(std::make_unique<Player>(environment)), unit(environment, tables, style), filter(environment)
{
    filter.input = player.get();
    filter.frequency.assign(static_cast<float>(std::log2(setting.cutoffHz)));
    filter.peak.assign(static_cast<float>(setting.peak));
    filter.attachParallel(unit);
}

FilterProbe::~FilterProbe() = default;

std::vector<float> FilterProbe::run(const std::vector<float>& in)
{
    const FloatingPointScope scope;
    std::vector<float> out;
    out.reserve(in.size());
    player->next = in.data();
    while (out.size() < in.size()) {
        const auto left = static_cast<int>(in.size() - out.size());
        const int count = std::min(environment.maxBlockSize(), left);
        environment.nextGeneration();
        const wave::Block& block = filter.pull(count);
        out.insert(out.end(), block.data(), block.data() + count);
        environment.run(count, false);
    }
    return out;
}
