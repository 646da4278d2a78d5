// Damages files by the thousands and reads them. Built with the address sanitizer it finds what reads or
// writes where it shouldn't; in any build it finds what hangs and what is wrong afterwards.
#include "FuzzTarget.h"
#include "Mutator.h"
#include "render/ProgressBar.h"
#include "support/TemporaryHome.h"

#include <CLI/CLI.hpp>
#include <unistd.h>

#include <chrono>
#include <iostream>

namespace {

constexpr double longestSeconds = 2.0;  // for one input

struct Options {
    std::string target = "all";
    std::uint32_t runs = 100000;
    std::uint32_t first = 0;
    std::uint32_t seed = 1;
};

/// Returns the number of inputs after which something was wrong.
int fuzz(const FuzzTarget& target, const Options& options)
{
    ProgressBar progress(isatty(STDERR_FILENO) ? ProgressBar::Style::Bar : ProgressBar::Style::Lines,
                         std::cerr);
    using Clock = std::chrono::steady_clock;
    int faults = 0;
    for (std::uint32_t i = 0; i < options.runs; ++i) {
        const std::uint32_t run = options.first + i;
        const std::string bytes = Mutator(options.seed, run).mutate(target.seeds[run % target.seeds.size()]);
        const auto start = Clock::now();
        std::string wrong = target.read(bytes);
        const std::chrono::duration<double> taken = Clock::now() - start;
        if (taken.count() > longestSeconds)
            wrong += " took " + std::to_string(taken.count()) + " s";
        if (!wrong.empty()) {
            ++faults;
            std::cerr << target.name << " --seed " << options.seed << " --first " << run
                      << " --runs 1: " << wrong << '\n';
        }
        if (i % 256 == 0)
            progress.update(static_cast<double>(i) / options.runs, target.name);
    }
    return faults;
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    CLI::App app("Damages files and reads them.", "sordelin-fuzz");
    Options options;
    bool list = false;
    app.add_option("TARGET", options.target, "What to read; all of them unless given")->type_name("");
    app.add_option("--runs", options.runs, "Inputs for each target; 100000 unless given")->type_name("N");
    app.add_option("--first", options.first, "Number of the first input, to repeat one")->type_name("N");
    app.add_option("--seed", options.seed, "Other inputs for each seed; 1 unless given")->type_name("N");
    app.add_flag("--list", list, "Print the targets and exit");
    CLI11_PARSE(app, argumentCount, arguments);

    const TemporaryHome home;  // nothing of the user's is touched
    int faults = 0;
    bool found = false;
    for (const FuzzTarget& target : fuzzTargets()) {
        if (list) {
            std::cout << target.name << '\n';
            continue;
        }
        if (options.target != "all" && options.target != target.name)
            continue;
        found = true;
        faults += fuzz(target, options);
    }
    if (!found && !list)
        std::cerr << "no target " << options.target << "; --list tells them\n";
    return faults == 0 && (found || list) ? 0 : 1;
}
