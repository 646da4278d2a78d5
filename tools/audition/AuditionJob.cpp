#include "audition/AuditionJob.h"

#include "audition/AuditionReport.h"
#include "audition/ContactSheet.h"
#include "audition/PresetSettings.h"
#include "clap_host/ClapModule.h"
#include "clap_host/QuotedText.h"
#include "render/ModuleLocator.h"
#include "render/ProgressBar.h"
#include "render/RenderError.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <exception>
#include <mutex>
#include <thread>

namespace {

using Values = std::vector<std::vector<ClapEvent>>;  // one list per preset

bool isWanted(const FactorySource& source, const std::vector<std::string>& parts)
{
    return parts.empty() || std::ranges::any_of(parts, [&](const std::string& part) {
               return source.label().find(part) != std::string::npos;
           });
}

std::vector<FactorySource> wantedSources(const AuditionOptions& options)
{
    std::vector<FactorySource> sources = readFactorySources(options.root);
    std::erase_if(sources, [&](const FactorySource& source) { return !isWanted(source, options.only); });
    if (sources.empty())
        throw RenderError("no preset has that in its name");
    return sources;
}

/// Everything that can't be read is told at once: a person mends many lines in one go.
Values readValues(const ClapModule& module, const AuditionOptions& options,
                  const std::vector<FactorySource>& sources)
{
    ClapInstance instance(module);
    std::vector<ClapEvent> base = defaultEvents(instance.parameters());
    if (!options.stage.empty())
        applySource(base, instance.parameters(), readFactorySource(options.stage, ""));
    Values values;
    std::string errors;
    for (const FactorySource& source : sources) {
        values.push_back(base);
        try {
            applySource(values.back(), instance.parameters(), source);
        } catch (const RenderError& error) {
            errors.append(errors.empty() ? "" : "\n").append(error.what());
        }
    }
    if (!errors.empty())
        throw RenderError(errors);
    return values;
}

/// Hears all presets, as many at a time as the machine has cores.
class ParallelAudition {
public:
    ParallelAudition(const AuditionRenderer& auditionRenderer, const std::vector<Material>& heardMaterials,
                     const Values& presetValues)
        : renderer(auditionRenderer),
          materials(heardMaterials),
          values(presetValues),
          results(presetValues.size())
    {}

    std::vector<AuditionResult> run(ProgressBar& progress)
    {
        using namespace std::chrono_literals;
        const std::size_t count =
            std::min<std::size_t>(std::max(std::thread::hardware_concurrency(), 1u), values.size());
        std::vector<std::unique_ptr<PresetAudition>> auditions;
        for (std::size_t i = 0; i < count; ++i)
            auditions.push_back(std::make_unique<PresetAudition>(renderer, materials));
        {
            std::vector<std::jthread> threads;
            for (const auto& audition : auditions)
                threads.emplace_back([this, &audition] { work(*audition); });
            while (done < values.size() && !failed) {
                progress.update(static_cast<double>(done) / static_cast<double>(values.size()),
                                "hearing presets");
                std::this_thread::sleep_for(50ms);
            }
        }
        if (failed)
            std::rethrow_exception(failure);
        return std::move(results);
    }

private:
    void work(PresetAudition& audition)
    {
        try {
            for (std::size_t i = next++; i < values.size() && !failed; i = next++) {
                results[i] = audition.hear(values[i]);
                ++done;
            }
        } catch (...) {
            const std::scoped_lock lock(failureLock);
            failure = std::current_exception();
            failed = true;
        }
    }

    const AuditionRenderer& renderer;
    const std::vector<Material>& materials;
    const Values& values;
    std::vector<AuditionResult> results;  // each place written by one thread
    std::atomic<std::size_t> next{0};
    std::atomic<std::size_t> done{0};
    std::atomic<bool> failed{false};
    std::mutex failureLock;
    std::exception_ptr failure;  // guarded by it until the threads have ended
};

ProgressBar::Style progressStyle(bool quiet)
{
    if (quiet)
        return ProgressBar::Style::None;
    return isatty(STDERR_FILENO) ? ProgressBar::Style::Bar : ProgressBar::Style::Lines;
}

std::vector<std::string> namesOf(const std::vector<Material>& materials)
{
    std::vector<std::string> names;
    for (const Material& material : materials)
        names.push_back(material.name);
    return names;
}

bool allForgiven(const AuditionReport& report, const std::vector<std::string>& forgiven)
{
    for (std::size_t i = 0; i < report.sources.size(); ++i) {
        if (!report.verdicts[i].faults.empty() &&
            std::ranges::find(forgiven, report.sources[i].label()) == forgiven.end())
            return false;
    }
    return true;
}

}  // namespace

bool runAudition(const AuditionOptions& options, std::ostream& out, std::ostream& messages)
{
    AuditionReport report;
    report.sources = wantedSources(options);
    const ClapModule module(options.plugin.empty() ? locateModule(moduleFolders()) : options.plugin);
    const Values values = readValues(module, options, report.sources);
    if (options.check) {
        out << values.size() << " presets read\n";
        return true;
    }

    const std::vector<Material> materials = auditionMaterials(options.samples);
    const AuditionRenderer renderer(module, options.tailSeconds);
    {
        ProgressBar progress(progressStyle(options.quiet), messages);
        report.results = ParallelAudition(renderer, materials, values).run(progress);
    }
    report.verdicts = judge(report.results);
    printReport(report, options.materials ? namesOf(materials) : std::vector<std::string>{}, out);
    if (!options.sheet.empty() &&
        !writeContactSheet(report, options.columns, options.sheetScale, options.sheet))
        throw RenderError("can't write the picture " + inQuotes(options.sheet.string()));
    return allForgiven(report, options.forgiven);
}
