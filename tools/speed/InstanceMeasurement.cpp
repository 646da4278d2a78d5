#include "speed/InstanceMeasurement.h"

#include "clap_host/ClapInstance.h"
#include "speed/PluginSubject.h"
#include "speed/SpeedInput.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <algorithm>
#include <chrono>
#include <fstream>
#include <limits>
#include <memory>

namespace {

constexpr std::uint32_t block = PluginSubject::usualBlock;

/// Private memory of this process that is in the machine's, in MiB. 0 where the system doesn't tell.
double residentMiB()
{
    std::ifstream rollup("/proc/self/smaps_rollup");
    double kib = 0.0;
    for (std::string key; rollup >> key;) {
        double value = 0.0;
        if (key.starts_with("Private_") && rollup >> value)
            kib += value;
    }
    return kib / 1024.0;
}

/// Many instances that play side by side, as the tracks of a project do: each its block, then the next one.
class Ensemble {
public:
    explicit Ensemble(const ClapModule& pluginModule) : module(pluginModule) {}

    void growTo(int count)
    {
        while (static_cast<int>(players.size()) < count)
            players.push_back(std::make_unique<Player>(module));
    }
    /// Plays `frames` of sound, whole blocks.
    void play(std::int64_t frames)
    {
        for (std::int64_t done = 0; done < frames; done += block) {
            const std::size_t at =
                static_cast<std::size_t>(done) % static_cast<std::size_t>(SpeedSubject::stretchFrames);
            const float* const samples = speedInput().data() + at;
            for (const auto& player : players)
                player->renderer.render({samples, samples}, {}, out[0], out[1], block);
        }
    }

private:
    struct Player {
        explicit Player(const ClapModule& playedModule)
            : instance(playedModule), renderer(instance, {SpeedSubject::sampleRate, block, 120.0, 0.0})
        {}
        ClapInstance instance;
        BlockRenderer renderer;
    };

    const ClapModule& module;
    std::vector<std::unique_ptr<Player>> players;
    float out[2][block] = {};
};

/// Memory that has once been played through: a delay line that nobody has written yet takes none.
void measureMemory(const ClapModule& module, int count, InstanceFigures& figures)
{
    Ensemble ensemble(module);
#if defined(__GLIBC__)
    malloc_trim(0);  // what earlier instances left would be taken up again, and not be counted
#endif
    const double before = residentMiB();
    ensemble.growTo(count);
    ensemble.play(6 * SpeedSubject::stretchFrames);
    figures.residentMiB = (residentMiB() - before) / count;
    figures.residentInstances = count;
}

double measureLoad(Ensemble& ensemble, int rounds)
{
    constexpr std::int64_t frames = 100 * block;  // 267 ms
    ensemble.play(8 * block);
    double least = std::numeric_limits<double>::max();
    for (int round = 0; round < rounds; ++round) {
        const double start = threadSeconds();
        ensemble.play(frames);
        least = std::min(least, threadSeconds() - start);
    }
    return least * SpeedSubject::sampleRate / static_cast<double>(frames);
}

}  // namespace

double millisecondsToMake(const ClapModule& module)
{
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    ClapInstance instance(module);
    instance.activate(SpeedSubject::sampleRate, 1, block);
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

InstanceFigures measureInstances(const ClapModule& module, const InstancePlan& plan,
                                 const std::function<void(double)>& tellDone)
{
    InstanceFigures figures;
    // With one alive, as in a project: what all share is made with the first one, and goes with the last.
    const ClapInstance other(module);
    std::vector<double> times;
    for (int i = 0; i < plan.made; ++i)
        times.push_back(millisecondsToMake(module));
    std::ranges::sort(times);
    figures.makeMs.figure = {times.front(), times[times.size() / 2]};
    measureMemory(module, plan.resident, figures);

    Ensemble ensemble(module);
    for (const int count : plan.playing) {
        ensemble.growTo(count);
        figures.loads.push_back({count, measureLoad(ensemble, plan.rounds)});
        tellDone(static_cast<double>(figures.loads.size()) / static_cast<double>(plan.playing.size()));
    }
    return figures;
}
