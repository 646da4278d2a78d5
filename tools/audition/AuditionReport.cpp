#include "audition/AuditionReport.h"

#include "clap_host/NumberText.h"
#include "clap_host/QuotedText.h"
#include "render/LevelMeter.h"

#include <algorithm>

namespace {

std::string cell(const std::string& text, std::size_t width)
{
    return text.size() < width ? std::string(width - text.size(), ' ').append(text) : text;
}

std::string leftCell(std::string text, std::size_t width)
{
    if (text.size() < width)
        text.append(width - text.size(), ' ');
    return text;
}

std::string tailText(const Tail& tail)
{
    return std::string(tail.longer ? ">" : "").append(fixedText(tail.seconds, 1));
}

struct Row {
    double levelDb, wetDb, peak, centroidHz, widthDb, movementDb;
    Tail tail;
};

std::string rowText(const Row& row)
{
    return cell(fixedText(row.levelDb, 1), 7) + cell(fixedText(row.wetDb, 1), 7) +
           cell(fixedText(decibels(row.peak), 1), 7) + cell(fixedText(row.centroidHz, 0), 7) +
           cell(fixedText(row.widthDb, 1), 7) + cell(fixedText(row.movementDb, 2), 6) +
           cell(tailText(row.tail), 7);
}

std::string heading(std::size_t nameWidth)
{
    return leftCell("Preset", nameWidth) + cell("level", 7) + cell("wet", 7) + cell("peak", 7) +
           cell("bright", 7) + cell("width", 7) + cell("move", 6) + cell("tail", 7) + "  nearest\n" +
           leftCell("", nameWidth) + cell("dB", 7) + cell("dB", 7) + cell("dBFS", 7) + cell("Hz", 7) +
           cell("dB", 7) + cell("dB", 6) + cell("s", 7) + "\n";
}

void printMaterials(const AuditionResult& result, const std::vector<std::string>& materials,
                    std::size_t nameWidth, std::ostream& out)
{
    for (std::size_t i = 0; i < materials.size(); ++i) {
        const MaterialResult& one = result.materials[i];
        out << leftCell("  " + materials[i], nameWidth)
            << rowText(
                   {one.levelDb, one.wetDb, one.peak, one.centroidHz, one.widthDb, one.movementDb, one.tail})
            << '\n';
    }
}

}  // namespace

std::size_t AuditionReport::faulty() const
{
    return static_cast<std::size_t>(std::ranges::count_if(
        verdicts, [](const PresetVerdict& verdict) { return !verdict.faults.empty(); }));
}

std::string measuresText(const AuditionResult& result)
{
    return fixedText(result.levelDb(), 1) + " dB   " + fixedText(result.centroidHz() / 1000.0, 1) +
           " kHz   w " + fixedText(result.widthDb(), 0) + "   m " + fixedText(result.movementDb(), 1) +
           "   t " + tailText(result.tail()) + " s";
}

void printReport(const AuditionReport& report, const std::vector<std::string>& materials, std::ostream& out)
{
    std::size_t nameWidth = 24;
    for (const FactorySource& source : report.sources)
        nameWidth = std::max(nameWidth, source.label().size() + 2);
    out << heading(nameWidth);
    for (std::size_t i = 0; i < report.sources.size(); ++i) {
        const AuditionResult& result = report.results[i];
        const PresetVerdict& verdict = report.verdicts[i];
        out << leftCell(report.sources[i].label(), nameWidth)
            << rowText({result.levelDb(), result.wetDb(), result.peak(), result.centroidHz(),
                        result.widthDb(), result.movementDb(), result.tail()});
        if (verdict.nearest != i)
            out << "  " << fixedText(verdict.distance, 2) << ' ' << report.sources[verdict.nearest].name;
        out << '\n';
        printMaterials(result, materials, nameWidth, out);
        for (const std::string& fault : verdict.faults)
            out << "  ! " << fault << '\n';
    }
    out << report.sources.size() << " presets, " << report.faulty() << " with faults\n";
}
