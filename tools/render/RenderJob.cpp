#include "render/RenderJob.h"

#include "clap_host/InstanceState.h"
#include "clap_host/NumberText.h"
#include "clap_host/QuotedText.h"
#include "plot/RenderPlot.h"
#include "render/AudioFile.h"
#include "render/LevelMeter.h"
#include "render/MidiFile.h"
#include "render/ModuleLocator.h"
#include "render/ParameterTable.h"
#include "render/PendingFile.h"
#include "render/RenderError.h"
#include "render/Summary.h"

#include <unistd.h>

#include <cmath>
#include <fstream>
#include <iterator>

namespace {

ProgressBar::Style progressStyle(bool quiet)
{
    if (quiet)
        return ProgressBar::Style::None;
    return isatty(STDERR_FILENO) ? ProgressBar::Style::Bar : ProgressBar::Style::Lines;
}

StereoSignal readSideChain(const std::filesystem::path& file, double sampleRate)
{
    if (file.empty())
        return {};
    StereoSignal signal = readAudioFile(file);
    if (signal.sampleRate != sampleRate)
        throw RenderError("the side chain " + inQuotes(file.string()) + " is at " +
                          fixedText(signal.sampleRate, 0) + " Hz, the input at " + fixedText(sampleRate, 0));
    return signal;
}

/// In print, a minus is longer than a hyphen.
std::string withMinusSigns(const std::string& text)
{
    std::string result;
    for (const char c : text)
        c == '-' ? result.append("\u2212") : result.append(1, c);
    return result;
}

std::string levelText(const StereoSignal& signal)
{
    const LevelMeter meter(signal);
    return withMinusSigns(durationText(signal.seconds()) + "   peak " + decibelText(meter.peak()) +
                          "   RMS " + decibelText(meter.rms()));
}

/// One rendering from the command line, in the order of its steps.
class RenderJob {
public:
    RenderJob(const RenderOptions& jobOptions, ClapInstance& jobInstance)
        : options(jobOptions), instance(jobInstance), audioFile(options.output, existing())
    {
        if (!options.plot.empty())
            plotFile.emplace(options.plot, existing());
        if (!options.saveState.empty())
            stateFile.emplace(options.saveState, existing());
    }

    void prepare()
    {
        input = readAudioFile(options.input);
        format = audioFormatFor(options.output);
        tryFormat();
        sideChain = readSideChain(options.sideChain, input.sampleRate);
        if (!options.loadState.empty())
            takeState();
        if (!options.preset.empty())
            takePreset();
        for (const std::string& setting : options.settings)
            settings.push_back(applySetting(instance, setting));
        if (!options.automation.empty())
            events = automationEvents(instance.parameters(), readAutomationFile(options.automation),
                                      input.sampleRate, options.automation.string());
        if (!options.midi.empty())
            addMidi(readMidiFile(options.midi));
    }

    void render(std::ostream& messages)
    {
        ProgressBar progress(progressStyle(options.quiet), messages);
        SignalRenderer renderer(instance,
                                {input, sideChain, events, options.blockFrames, options.tempoBpm,
                                 options.songPositionBeats, options.tailSeconds},
                                progress);
        outcome = renderer.run();
    }

    /// All files are complete before any gets its name.
    void write()
    {
        writeAudioFile(audioFile, outcome.output, format);
        if (plotFile)
            drawPlot();
        if (stateFile)
            writeState();
        audioFile.commit();
        for (auto* file : {&plotFile, &stateFile}) {
            if (*file)
                (*file)->commit();
        }
    }

    void summarise(std::ostream& out) const
    {
        printSummary({options.input.string(), options.output.string(), options.plot.string(), input, outcome,
                      settings, format.clips},
                     out);
    }

private:
    PendingFile::Existing existing() const
    {
        return options.overwrite ? PendingFile::Existing::Replace : PendingFile::Existing::Refuse;
    }

    void takeState()
    {
        std::ifstream file(options.loadState, std::ios::binary);
        const std::string state{std::istreambuf_iterator<char>(file), {}};
        if (!file.good())
            throw RenderError("can't read the state " + inQuotes(options.loadState.string()));
        if (!loadState(instance, state))
            throw RenderError("the plug-in doesn't take the state " + inQuotes(options.loadState.string()));
    }

    void takePreset()
    {
        if (loadPresetFile(instance, std::filesystem::absolute(options.preset).string()))
            return;
        const std::vector<std::string>& reasons = instance.host().calls.presetErrors;
        throw RenderError("the preset " + inQuotes(options.preset.string()) + " doesn't load" +
                          (reasons.empty() ? std::string() : ": " + reasons.back()));
    }

    void writeState() const
    {
        const auto state = saveState(instance);
        std::ofstream file(stateFile->path(), std::ios::binary);
        if (!state || !file.write(state->data(), static_cast<std::streamsize>(state->size())).flush())
            throw RenderError("can't write the state " + inQuotes(options.saveState.string()));
    }

    void addMidi(const std::vector<MidiFileMessage>& messages)
    {
        for (const MidiFileMessage& message : messages)
            events.push_back({std::llround(message.seconds * input.sampleRate),
                              midiEvent(0, message.status, message.data1, message.data2)});
    }

    /// An unsuitable sample rate shows before anything is rendered, not after.
    void tryFormat() const
    {
        writeAudioFile(audioFile, StereoSignal{input.sampleRate, {}, {}}, format);
        std::filesystem::remove(audioFile.path());
    }

    void drawPlot() const
    {
        PlotContent content{input,      outcome.output,   options.output.filename().string(),
                            subtitle(), levelText(input), levelText(outcome.output),
                            {},         options.tempoBpm};
        for (const AppliedSetting& setting : settings)
            content.settings.push_back(setting.name + " " + setting.text);
        if (!writeRenderPlot(content, plotFile->path()))
            throw RenderError("can't write the picture " + inQuotes(options.plot.string()));
    }

    std::string subtitle() const
    {
        std::string text = options.input.filename().string() + " through " + instance.plugin().desc->name +
                           ", " + fixedText(input.sampleRate / 1000.0, 1) + " kHz";
        if (options.tempoBpm)
            text += ", " + fixedText(*options.tempoBpm, 0) + " BPM";
        return text;
    }

    const RenderOptions& options;
    ClapInstance& instance;
    PendingFile audioFile;
    std::optional<PendingFile> plotFile;
    std::optional<PendingFile> stateFile;
    AudioFormat format;
    StereoSignal input;
    StereoSignal sideChain;
    std::vector<AppliedSetting> settings;
    std::vector<TimedEvent> events;
    RenderOutcome outcome;
};

}  // namespace

void runRenderJob(const RenderOptions& options, std::ostream& out, std::ostream& messages)
{
    const ClapModule module(options.plugin.empty() ? locateModule(moduleFolders()) : options.plugin);
    ClapInstance instance(module);
    if (options.listParameters)
        return printParameterTable(instance.parameters(), out);

    RenderJob job(options, instance);
    job.prepare();
    job.render(messages);
    job.write();
    if (!options.quiet)
        job.summarise(out);
}
