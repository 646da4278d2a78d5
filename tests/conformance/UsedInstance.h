#pragma once

#include "HostileBlock.h"
#include "clap_host/ClapInstance.h"
#include "stress/MainThreadUser.h"

#include <atomic>
#include <memory>
#include <thread>

/// An instance in random use: while active it plays hostile blocks on a thread of its own, and the main
/// thread goes on with it. What it does wrong is a failure of the present test. Thread: main.
class UsedInstance {
public:
    /// @param presets  files to load from
    UsedInstance(const ClapModule& module, std::uint32_t seed, std::vector<std::string> presets);
    /// Ends in whatever state it is.
    ~UsedInstance();

    /// Does one thing: mostly something that is allowed while it plays, now and then a change of state.
    void act();

private:
    void changeState();
    void activate();
    void deactivate();
    void flushAtRest();
    // Thread: audio.
    void play(std::uint32_t seed);
    void playBlocks(HostileBlock& block, Random& numbers);

    Random random;
    ClapInstance instance;
    MainThreadUser user;
    HostileBlock restBlock;
    std::uint32_t longest = 1;  // frames
    std::atomic<bool> ending{false};
    std::thread audio;
};
