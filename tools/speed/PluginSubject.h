#pragma once

#include "clap_host/BlockRenderer.h"
#include "speed/SpeedSubject.h"

#include <optional>
#include <vector>

/// A setting as the plug-in shows it: the parameter's name and the text of its value.
using SpeedSettings = std::vector<std::pair<std::string, std::string>>;

/// A patch of the plug-in as its host plays it, with a song at 120 BPM. A module is the one thing that its
/// instances share; it outlives this.
class PluginSubject : public SpeedSubject {
public:
    static constexpr std::uint32_t usualBlock = 128;  // frames

    /// Throws ClapHostError for what the plug-in doesn't know.
    PluginSubject(std::string subjectName, const ClapModule& module, const SpeedSettings& settings,
                  std::uint32_t blockFrames = usualBlock);
    PluginSubject(std::string subjectName, const ClapModule& module, const std::vector<ClapEvent>& values,
                  std::uint32_t blockFrames = usualBlock);

    /// Changes the patch while it plays.
    void set(const SpeedSettings& settings);
    /// Plays until delay lines and envelopes hold what they will hold from now on.
    void warmUp();
    void playStretch() override;

private:
    ClapInstance instance;
    std::vector<float> left = std::vector<float>(stretchFrames);
    std::vector<float> right = std::vector<float>(stretchFrames);
    std::optional<BlockRenderer> renderer;
};

/// A plug-in of one channel, twice: once for each channel.
class MonoPairSubject : public SpeedSubject {
public:
    /// Throws ClapHostError if the plug-in has other ports, or doesn't start.
    MonoPairSubject(std::string subjectName, const ClapModule& module,
                    std::uint32_t blockFrames = PluginSubject::usualBlock);
    void playStretch() override;

private:
    static void requireOneChannel(const ClapInstance& instance);

    std::uint32_t blockFrames;
    ClapInstance instances[2];
    std::vector<float> output = std::vector<float>(stretchFrames);
};
