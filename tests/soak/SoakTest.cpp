// Endurance: hours of sound through one instance, while everything that can be automated is.
#include "clap_host/ClapInstance.h"
#include "stress/RandomEvents.h"
#include "stress/RunLength.h"

#include <gtest/gtest.h>

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>

namespace {

constexpr double rates[] = {48000.0, 88200.0, 96000.0, 176400.0, 192000.0, 22050.0, 32000.0, 44100.0};
constexpr std::uint32_t longestBlock = 1024;
#if defined(SORDELIN_SANITIZED)
constexpr double quickSeconds = 8.0;  // of sound
#else
constexpr double quickSeconds = 64.0;
#endif

/// Automates what it is given and plays through it.
class Endurance {
public:
    /// @param isAutomated  by name
    Endurance(std::uint32_t seed, const std::function<bool(const std::string&)>& isAutomated) : random(seed)
    {
        for (const ClapParameter& parameter : instance.parameters().list()) {
            if (isAutomated(parameter.name))
                automated.push_back(parameter);
        }
    }
    void set(const std::string& name, const std::string& text)
    {
        const clap_id id = instance.parameters().require(name).id;
        events.clear();
        events.add(parameterEvent(0, id, instance.parameters().fromText(id, text).value()));
        instance.flush(events);
    }
    /// Plays so many seconds of sound, in equal parts at each of the rates.
    void play(double seconds)
    {
        for (const double rate : rates) {
            instance.activate(rate, 1, longestBlock);
            instance.startProcessing();
            playAtRate(rate, seconds / std::size(rates));
            instance.stopProcessing();
            instance.deactivate();
        }
    }
    float loudest() const { return largest; }

private:
    void playAtRate(double rate, double seconds)
    {
        const auto frames = static_cast<std::int64_t>(rate * seconds);
        for (std::int64_t done = 0; done < frames && !testing::Test::HasFailure();) {
            const std::uint32_t count = random.oneIn(8) ? 1 + random.below(longestBlock) : 512;
            playBlock(count);
            done += count;
        }
    }
    void playBlock(std::uint32_t frames)
    {
        // Full scale, or near silence: loops have to live on what they have.
        const auto level = static_cast<float>(std::pow(random.unit(), 8.0));
        for (auto& channel : in)
            std::generate_n(channel.begin(), frames,
                            [&] { return level * static_cast<float>(random.unit() * 2.0 - 1.0); });
        automation.fill(events, frames);
        ClapBlock block;
        block.inputs = inputs;
        block.outputs = outputs;
        block.frames = frames;
        block.events = &events;
        instance.process(block);
        for (const auto& channel : out) {
            for (std::uint32_t i = 0; i < frames; ++i) {
                if (!std::isfinite(channel[i]))
                    FAIL() << "no number came out";
                largest = std::max(largest, std::fabs(channel[i]));
            }
        }
    }

    Random random;
    ClapModule module{SORDELIN_MODULE};
    ClapInstance instance{module};
    std::vector<ClapParameter> automated;
    RandomEvents automation{automated, random};
    EventList events{4096};
    std::array<std::vector<float>, 4> in{std::vector<float>(longestBlock), std::vector<float>(longestBlock),
                                         std::vector<float>(longestBlock), std::vector<float>(longestBlock)};
    std::array<std::vector<float>, 2> out{std::vector<float>(longestBlock), std::vector<float>(longestBlock)};
    std::array<float*, 4> inPointers{in[0].data(), in[1].data(), in[2].data(), in[3].data()};
    std::array<float*, 2> outPointers{out[0].data(), out[1].data()};
    std::array<clap_audio_buffer_t, 2> inputs{clap_audio_buffer_t{inPointers.data(), nullptr, 2, 0, 0},
                                              clap_audio_buffer_t{inPointers.data() + 2, nullptr, 2, 0, 0}};
    std::array<clap_audio_buffer_t, 1> outputs{clap_audio_buffer_t{outPointers.data(), nullptr, 2, 0, 0}};
    float largest = 0.0f;
};

/// kB that the process holds in memory.
long residentKb()
{
    long total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

long allocatedBytes()
{
    const auto info = mallinfo2();
    return static_cast<long>(info.uordblks + info.hblkhd);
}

}  // namespace

TEST(Soak, StaysInItsBoundsAndInItsMemory)
{
    const std::uint32_t seed = seedToRun();
    SCOPED_TRACE(testing::Message() << "SORDELIN_SEED=" << seed);
    const double seconds = secondsToRun(quickSeconds);
    Endurance endurance(seed, [](const std::string&) { return true; });
    constexpr int parts = 16;
    [[maybe_unused]] long residentBefore = 0, allocatedBefore = 0;
    for (int part = 1; part <= parts && !HasFailure(); ++part) {
        endurance.play(seconds / parts);
        std::printf("%3d %%, %.0f s of sound, loudest %+.1f dB, %ld kB\n", part * 100 / parts,
                    seconds / parts * part, 20.0 * std::log10(endurance.loudest()), residentKb());
        std::fflush(stdout);
        // By now the delay lines have been filled at each rate, and so all their memory is there.
        if (part == parts / 2) {
            residentBefore = residentKb();
            allocatedBefore = allocatedBytes();
        }
    }
    // Loops without filters may grow to the +120 dB that each line keeps. Two lines sum in each channel, two
    // channels in mid and side.
    EXPECT_LE(endurance.loudest(), 4.1e6f);
#if !defined(SORDELIN_SANITIZED)
    EXPECT_LE(residentKb() - residentBefore, 1024);
    EXPECT_LE(allocatedBytes() - allocatedBefore, 4096);
#endif
}

TEST(Soak, IsHeldByTheFiltersThatClip)
{
    const std::uint32_t seed = seedToRun();
    SCOPED_TRACE(testing::Message() << "SORDELIN_SEED=" << seed);
    Endurance endurance(seed, [](const std::string& name) {
        return !name.ends_with("Enabled") && !name.ends_with("Characteristic");
    });
    for (const char* filter : {"Filter 1 ", "Filter 2 "}) {
        endurance.set(std::string(filter).append("Enabled"), "Enabled");
        endurance.set(std::string(filter).append("Characteristic"), "Morvelane Prime");
    }
    endurance.play(secondsToRun(quickSeconds) / 8.0);
    std::printf("loudest %+.1f dB\n", 20.0 * std::log10(endurance.loudest()));
    EXPECT_LE(endurance.loudest(), 10.0f);
}
