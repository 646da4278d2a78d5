#pragma once

#include "clap_host/ClapInstance.h"
#include "stress/Random.h"

#include <string>
#include <vector>

/// What a host does with an instance on its main thread while it plays on another: it reads and shows
/// parameters, keeps states and brings them back, loads presets, asks for ports, and serves its main loop.
///
/// Answers that the format forbids are failures of the present test. Thread: main.
class MainThreadUser {
public:
    /// @param presetFiles  to load from
    MainThreadUser(ClapInstance& used, Random& numbers, std::vector<std::string> presetFiles);

    /// Does one of these things.
    void act();

    /// The presets that the first instance of a process has put into the user's folders.
    static std::vector<std::string> presetsOfHome();

private:
    void readParameters();
    void convertValues();
    void readTexts();
    void keepState();
    void restoreState();
    void restoreDamagedState();
    void loadPreset();
    void loadNoPreset();
    void askForPorts();
    void askForExtensions();
    void serveMainLoop();
    void tellTheTrack();

    clap_id anyParameter();

    ClapInstance& instance;
    Random& random;
    std::vector<std::string> presets;
    std::vector<std::string> states;  // kept ones
    const clap_plugin_params_t& params;
};
