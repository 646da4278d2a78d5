#pragma once

#include "clap_host/StereoSignal.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// What the picture of a rendering shows. Texts are UTF-8.
struct PlotContent {
    const StereoSignal& input;
    const StereoSignal& output;  // begins when the input begins
    std::string title;
    std::string subtitle;
    std::string inputLevels;  // a line of length and levels
    std::string outputLevels;
    std::vector<std::string> settings;  // "Delay 1 Time 350.0 ms"
    std::optional<double> tempoBpm;     // nothing: no beats are shown
};

/// Draws both waveforms and the output's spectrogram on one axis of time, as a PNG file.
/// False if the file can't be written. Thread: any, one at a time.
bool writeRenderPlot(const PlotContent& content, const std::filesystem::path& file);
