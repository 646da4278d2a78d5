#include "speed/SpeedJob.h"

#include "audition/PresetSettings.h"
#include "clap_host/QuotedText.h"
#include "render/ModuleLocator.h"
#include "render/ProgressBar.h"
#include "render/RenderError.h"
#include "speed/FilterFloor.h"
#include "speed/InstanceMeasurement.h"
#include "speed/MemoryFloor.h"
#include "speed/SpeedPatches.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>

namespace {

constexpr const char* peerFile = "ZamDelay.clap";
constexpr const char* peerPackage = "zam-plugins";

/// Some that people will try first; the most costly of all comes besides.
constexpr const char* chosenPresets[] = {"Clean", "_10 Dub/Kingston Night", "_6 Ping-Pong/", "_8 Modulated/"};

std::filesystem::path findPeer()
{
    for (const auto& folder : moduleFolders()) {
        std::error_code unreadable;
        if (std::filesystem::exists(folder / peerFile, unreadable))
            return folder / peerFile;
    }
    return {};
}

/// The subjects of one group, and where their figures go.
struct SubjectGroup {
    std::vector<std::unique_ptr<SpeedSubject>> subjects;
    std::vector<SpeedRow>* rows;
};

class SpeedJob {
public:
    SpeedJob(const SpeedOptions& jobOptions, ProgressBar& jobProgress)
        : options(jobOptions),
          progress(jobProgress),
          rounds(options.quick ? 1 : 40),
          module(options.plugin.empty() ? locateModule(moduleFolders()) : options.plugin)
    {
        report.rounds = rounds;
        if (!options.commonPlugin.empty())
            commonModule.emplace(options.commonPlugin);
        if (const auto file = findPeer(); !file.empty())
            peerModule.emplace(file);
    }

    SpeedReport run()
    {
        if (!options.only.empty()) {
            measureRows();
            return report;
        }
        // Before any other instance, as its time is that of the first one in a process.
        const double firstMs = millisecondsToMake(module);
        measureRows();
        measureBlocks();
        measureMatrix();
        report.instances =
            measureInstances(module, options.quick ? InstancePlan{5, 4, {2, 4}, 1} : InstancePlan{},
                             [&](double done) { tell(0.8 + 0.2 * done, "playing many instances"); });
        report.instances.firstMs = firstMs;
        return report;
    }

private:
    void tell(double done, const char* activity) { progress.update(done, activity); }

    void measureRows()
    {
        SubjectGroup floors{{}, &report.floors};
        floors.subjects.push_back(makeFilterFloor());
        if (auto wide = makeWideFilterFloor())
            floors.subjects.push_back(std::move(wide));
        report.processor = floors.subjects.size() > 1 ? "AVX2 and FMA, eight lanes" : "four lanes";
        floors.subjects.push_back(std::make_unique<MemoryFloor>());

        SubjectGroup patches{{}, &report.patches};
        SubjectGroup common{{}, &report.commonKernel};
        for (const SpeedPatch& patch : speedPatches()) {
            if (patch.name.find(options.only) == std::string::npos)
                continue;
            patches.subjects.push_back(warmPatch(patch, module));
            if (commonModule && common.subjects.size() < 5)
                common.subjects.push_back(warmPatch(patch, *commonModule));
        }
        SubjectGroup presets = presetGroup();
        SubjectGroup peers = peerGroup();
        SubjectGroup* const groups[] = {&floors, &peers, &patches, &common, &presets};
        if (patches.subjects.empty())
            throw RenderError("no patch's name holds " + inQuotes(options.only));
        measureGroups(groups);
        if (!peerRows.empty())
            report.peer = peerRows.front();
    }

    void measureGroups(std::span<SubjectGroup* const> groups)
    {
        std::vector<SpeedSubject*> subjects;
        for (const SubjectGroup* group : groups) {
            for (const auto& subject : group->subjects)
                subjects.push_back(subject.get());
        }
        const std::vector<SpeedFigure> figures =
            measureInTurn(subjects, rounds, [&](double done) { tell(0.3 + 0.3 * done, "playing patches"); });
        std::size_t at = 0;
        for (const SubjectGroup* group : groups) {
            for (const auto& subject : group->subjects)
                group->rows->push_back({subject->name(), figures[at++]});
        }
    }

    std::unique_ptr<PluginSubject> warmPatch(const SpeedPatch& patch, const ClapModule& played) const
    {
        auto subject = std::make_unique<PluginSubject>(patch.name, played, patch.settings);
        if (!options.quick)
            subject->warmUp();
        if (!patch.later.empty()) {
            subject->set(patch.later);
            subject->playStretch();
        }
        return subject;
    }

    SubjectGroup peerGroup()
    {
        SubjectGroup group{{}, &peerRows};
        report.peerText =
            std::string("none installed: apt-get install ") + peerPackage + " brings " + peerFile;
        if (!peerModule)
            return group;
        const clap_plugin_descriptor_t& told = peerModule->descriptor();
        report.peerText = std::string("of the package ") + peerPackage +
                          ": one delay line, one filter and one channel each; played twice";
        group.subjects.push_back(std::make_unique<MonoPairSubject>(told.name, *peerModule));
        return group;
    }

    /// The chosen presets, and the one that costs most.
    SubjectGroup presetGroup()
    {
        SubjectGroup group{{}, &report.presets};
        if (options.presets.empty() || options.quick || !options.only.empty())
            return group;
        const std::vector<FactorySource> sources = readFactorySources(options.presets);
        std::vector<std::vector<ClapEvent>> values;
        {
            ClapInstance instance(module);
            for (const FactorySource& source : sources) {
                values.push_back(defaultEvents(instance.parameters()));
                applySource(values.back(), instance.parameters(), source);
            }
        }
        const std::size_t costliest = findCostliest(sources, values);
        const auto add = [&](std::size_t i, const std::string& name) {
            auto subject = std::make_unique<PluginSubject>(name, module, values[i]);
            subject->warmUp();
            group.subjects.push_back(std::move(subject));
        };
        for (const char* chosen : chosenPresets) {
            const auto found = std::ranges::find_if(
                sources, [&](const FactorySource& source) { return source.label().starts_with(chosen); });
            if (found != sources.end())
                add(static_cast<std::size_t>(found - sources.begin()), found->name);
        }
        add(costliest, sources[costliest].name + ", the costliest of " + std::to_string(sources.size()));
        return group;
    }

    std::size_t findCostliest(const std::vector<FactorySource>& sources,
                              const std::vector<std::vector<ClapEvent>>& values)
    {
        std::size_t costliest = 0;
        double most = 0.0;
        for (std::size_t i = 0; i < sources.size(); ++i) {
            PluginSubject subject(sources[i].name, module, values[i]);
            subject.playStretch();
            const double cost = measureInTurn({&subject}, 3, [](double) {}).front().least;
            if (cost > most) {
                most = cost;
                costliest = i;
            }
            tell(0.3 * static_cast<double>(i) / static_cast<double>(sources.size()),
                 "looking for the costliest preset");
        }
        return costliest;
    }

    void measureBlocks()
    {
        SeriesPlan plan;
        for (std::uint32_t frames = 16; frames <= 4096; frames *= options.quick ? 16 : 2) {
            plan.add("default, both filters on", frames,
                     std::make_unique<PluginSubject>("", module, SpeedSettings{}, frames));
            plan.add("default, filters off", frames,
                     std::make_unique<PluginSubject>("", module, withoutFilters(), frames));
            plan.add("24 slots from XY, filters off", frames,
                     std::make_unique<PluginSubject>("", module, slotsInUse(24), frames));
            if (peerModule)
                plan.add("peer", frames, std::make_unique<MonoPairSubject>("", *peerModule, frames));
        }
        report.blocks = plan.measure(rounds, [&](double done) { tell(0.6 + 0.1 * done, "sizes of blocks"); });
    }

    void measureMatrix()
    {
        SeriesPlan plan;
        for (int count = 0; count <= 24; count += options.quick ? 24 : 4) {
            plan.add("slots from XY, filters off", count,
                     std::make_unique<PluginSubject>("", module, slotsInUse(count)));
            plan.add("moving sources in slots, filters off", count,
                     std::make_unique<PluginSubject>("", module, sourcesInUse(count)));
        }
        report.matrix =
            plan.measure(rounds, [&](double done) { tell(0.7 + 0.1 * done, "slots and sources"); });
    }

    /// The subjects behind several curves.
    class SeriesPlan {
    public:
        void add(const std::string& name, double at, std::unique_ptr<SpeedSubject> subject)
        {
            subject->playStretch();
            names.push_back(name);
            places.push_back(at);
            subjects.push_back(std::move(subject));
        }
        std::vector<SpeedSeries> measure(int count, const std::function<void(double)>& tellDone) const
        {
            std::vector<SpeedSubject*> all;
            for (const auto& subject : subjects)
                all.push_back(subject.get());
            const std::vector<SpeedFigure> figures = measureInTurn(all, count, tellDone);
            std::vector<SpeedSeries> curves;
            for (std::size_t i = 0; i < names.size(); ++i) {
                auto curve = std::ranges::find(curves, names[i], &SpeedSeries::name);
                if (curve == curves.end())
                    curve = curves.insert(curves.end(), SpeedSeries{names[i], {}});
                curve->points.push_back({places[i], figures[i].least});
            }
            return curves;
        }

    private:
        std::vector<std::string> names;  // of the curve of each
        std::vector<double> places;
        std::vector<std::unique_ptr<SpeedSubject>> subjects;
    };

    const SpeedOptions& options;
    ProgressBar& progress;
    const int rounds;
    ClapModule module;
    std::optional<ClapModule> commonModule;
    std::optional<ClapModule> peerModule;
    std::vector<SpeedRow> peerRows;
    SpeedReport report;
};

}  // namespace

SpeedReport runSpeedJob(const SpeedOptions& options, std::ostream& out, std::ostream& messages)
{
    const bool terminal = isatty(STDERR_FILENO) != 0;
    std::filesystem::create_directories(options.folder);
    SpeedReport report;
    {
        ProgressBar progress(options.quiet ? ProgressBar::Style::None
                             : terminal    ? ProgressBar::Style::Bar
                                           : ProgressBar::Style::Lines,
                             messages);
        report = SpeedJob(options, progress).run();
    }
    std::ostringstream table;
    printSpeedReport(report, table);
    out << table.str();
    const std::filesystem::path text = options.folder / "speed.txt";
    const std::filesystem::path chart = options.folder / "speed.png";
    if (!(std::ofstream(text) << table.str()).flush())
        throw RenderError("can't write the table " + inQuotes(text.string()));
    if (options.only.empty() && !writeSpeedChart(report, chart))
        throw RenderError("can't write the picture " + inQuotes(chart.string()));
    return report;
}
