#include "render/Summary.h"

#include "clap_host/NumberText.h"
#include "clap_host/QuotedText.h"
#include "render/LevelMeter.h"

#include <algorithm>
#include <cmath>

namespace {

void printSignal(const char* heading, const std::string& name, const StereoSignal& signal,
                 std::size_t nameWidth, std::ostream& out)
{
    const LevelMeter meter(signal);
    out << heading << name << std::string(nameWidth - name.size(), ' ') << "  "
        << durationText(signal.seconds()) << "  peak " << decibelText(meter.peak()) << ", RMS "
        << decibelText(meter.rms()) << '\n';
    if (meter.nonFinite() > 0)
        out << "          " << meter.nonFinite() << " samples are not finite numbers\n";
}

void printSettings(const std::vector<AppliedSetting>& settings, std::ostream& out)
{
    const char* heading = "Settings  ";
    for (const AppliedSetting& setting : settings) {
        out << heading << setting.name << " = " << setting.text << '\n';
        heading = "          ";
    }
}

void printWarnings(const SummaryContent& content, std::ostream& out)
{
    if (content.formatClips && LevelMeter(content.outcome.output).peak() > 1.0)
        out << "Note      the output goes beyond full scale and was clipped; .wav keeps it as it is\n";
    if (content.outcome.tailCut)
        out << "Note      the output was still sounding when its tail was cut; --tail SECONDS goes on "
               "longer\n";
    if (content.outcome.unreachedEvents > 0)
        out << "Note      events behind the end, not reached: " << content.outcome.unreachedEvents << '\n';
}

}  // namespace

void printSummary(const SummaryContent& content, std::ostream& out)
{
    const std::size_t width = std::max(content.inputName.size(), content.outputName.size());
    const StereoSignal& output = content.outcome.output;
    printSignal("Input     ", content.inputName, content.input, width, out);
    printSignal("Output    ", content.outputName, output, width, out);
    if (!content.plotName.empty())
        out << "Picture   " << content.plotName << '\n';
    printSettings(content.settings, out);
    const double speed = content.outcome.renderedSeconds / std::max(content.outcome.wallSeconds, 1e-6);
    out << "Speed     " << fixedText(speed, 0) << " seconds of sound per second at "
        << fixedText(output.sampleRate, 0) << " Hz\n";
    printWarnings(content, out);
}

std::string durationText(double seconds)
{
    const auto hundredths = std::llround(seconds * 100.0);
    const std::string rest = fixedText(static_cast<double>(hundredths % 6000) / 100.0, 2);
    return std::to_string(hundredths / 6000) + (rest.size() < 5 ? ":0" : ":") + rest;
}
