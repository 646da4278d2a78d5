#include "render/RenderError.h"
#include "speed/SpeedJob.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>

namespace {

void declare(CLI::App& app, SpeedOptions& options)
{
    app.add_option("FOLDER", options.folder, "Takes the table speed.txt and the chart speed.png")
        ->type_name("")
        ->required();
    app.add_option("--presets", options.presets,
                   "Sources of the factory presets, which are then measured too")
        ->type_name("FOLDER");
    app.add_option("--plugin", options.plugin, "CLAP module to load instead of the built or installed one")
        ->type_name("FILE");
    app.add_option("--common-plugin", options.commonPlugin,
                   "The module as it runs on processors without AVX2")
        ->type_name("FILE");
    app.add_option("--only", options.only,
                   "Plays only the patches whose names hold this, beside the floors and the peer; no chart")
        ->type_name("TEXT");
    app.add_flag("--quick", options.quick, "A glance instead of figures to rely on");
    app.add_flag("-q,--quiet", options.quiet, "No progress");
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    SpeedOptions options;
    CLI::App app("Measures what the plug-in takes of a processor, beside floors that nothing can go below.",
                 "sordelin-speed");
    declare(app, options);
    CLI11_PARSE(app, argumentCount, arguments);
    try {
        runSpeedJob(options, std::cout, std::cerr);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "sordelin-speed: " << error.what() << '\n';
        return 1;
    }
}
