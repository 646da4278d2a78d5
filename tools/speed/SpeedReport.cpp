#include "speed/SpeedReport.h"

#include "clap_host/NumberText.h"

#include <algorithm>

namespace {

constexpr std::size_t nameWidth = 50;
constexpr std::size_t numberWidth = 9;

std::string padded(const std::string& text, std::size_t width)
{
    return text + std::string(width - std::min(width, text.size()), ' ');
}

std::string right(const std::string& text, std::size_t width = numberWidth)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

/// The columns of a line: the figure, and what it is beside the floors and the peer.
class Table {
public:
    Table(const SpeedReport& speedReport, std::ostream& stream) : report(speedReport), out(stream) {}

    void head(const std::string& title)
    {
        out << '\n' << padded(title, nameWidth) << right("least") << right("median");
    }
    void headOfPatches(const std::string& title)
    {
        head(title);
        out << right("per core") << right("x floor");
        if (report.peer)
            out << right("x peer");
        out << '\n';
    }
    void row(const SpeedRow& row)
    {
        out << "  " << padded(row.name, nameWidth - 2) << right(fixedText(row.figure.least, 2))
            << right(fixedText(row.figure.median, 2));
    }
    void patchRow(const SpeedRow& patch)
    {
        row(patch);
        const double least = patch.figure.least;
        out << right(fixedText(1e9 / (SpeedSubject::sampleRate * least), 0))
            << right(fixedText(least / report.floors.front().figure.least, 2));
        if (report.peer)
            out << right(fixedText(least / report.peer->figure.least, 2));
        out << '\n';
    }
    void series(const std::string& title, const std::vector<SpeedSeries>& all)
    {
        out << '\n' << padded(title, nameWidth);
        for (const SpeedSeries::Point& point : all.front().points)
            out << right(fixedText(point.at, 0), 8);
        out << '\n';
        for (const SpeedSeries& one : all) {
            out << "  " << padded(one.name, nameWidth - 2);
            for (const SpeedSeries::Point& point : one.points)
                out << right(fixedText(point.nanoseconds, 1), 8);
            out << '\n';
        }
    }

private:
    const SpeedReport& report;
    std::ostream& out;
};

void printInstances(const InstanceFigures& figures, std::ostream& out)
{
    const auto line = [&](const std::string& name, const std::string& value) {
        out << "  " << padded(name, nameWidth - 2) << right(value) << '\n';
    };
    out << "\ninstances\n";
    line("ms to make and activate the first one", fixedText(figures.firstMs, 2));
    line("ms for each further one, least", fixedText(figures.makeMs.figure.least, 2));
    line("ms for each further one, median", fixedText(figures.makeMs.figure.median, 2));
    line("MiB of memory for each of " + std::to_string(figures.residentInstances) + " that have played",
         fixedText(figures.residentMiB, 2));
    for (const InstanceFigures::Load& load : figures.loads)
        line("% of a core for " + std::to_string(load.instances) + " that play the default patch",
             fixedText(100.0 * load.cores, 1));
    line("instances of the default patch per core, by the last", fixedText(figures.perCore(), 0));
}

}  // namespace

void printSpeedReport(const SpeedReport& report, std::ostream& out)
{
    out << "Sordelin 2, ns of one core per stereo frame at 48 kHz, blocks of 128; " << report.rounds
        << " rounds, all in turn\n"
        << "the filters run on: " << report.processor << '\n';
    Table table(report, out);
    table.head("floors");
    out << '\n';
    for (const SpeedRow& floor : report.floors) {
        table.row(floor);
        out << '\n';
    }
    if (report.peer) {
        table.head("peer");
        out << '\n';
        table.row(*report.peer);
        out << '\n';
    }
    out << (report.peer ? "  " : "\npeer: ") << report.peerText << '\n';

    table.headOfPatches("patches");
    for (const SpeedRow& patch : report.patches)
        table.patchRow(patch);
    if (!report.commonKernel.empty()) {
        table.headOfPatches("on processors without AVX2");
        for (const SpeedRow& patch : report.commonKernel)
            table.patchRow(patch);
    }
    if (!report.presets.empty()) {
        table.headOfPatches("factory presets");
        for (const SpeedRow& preset : report.presets)
            table.patchRow(preset);
    }
    if (!report.blocks.empty()) {
        table.series("frames per block", report.blocks);
        table.series("in use", report.matrix);
        printInstances(report.instances, out);
    }
    out << "\nper core: instances in real time. x floor: over \"" << report.floors.front().name << "\".\n";
}
