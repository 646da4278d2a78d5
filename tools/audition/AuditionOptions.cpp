#include "audition/AuditionOptions.h"

#include "clap_host/NumberText.h"
#include "clap_host/QuotedText.h"
#include "render/RenderError.h"

#include <CLI/CLI.hpp>

namespace {

const char* const description =
    "Hears factory presets on drums, voice, plucked strings and a pad, prints what each does to them, and\n"
    "flags those that are silent, clip, run away, or sound like another. Fails if any is flagged.\n";

const char* const examples = "\nExamples:\n"
                             "  sordelin-audition resources/factory/FactoryPresets --sheet presets.png\n"
                             "  sordelin-audition my-xlfos --stage sweep.mvp";

/// Numbers as they were typed: CLI11 would read them by the locale.
struct TypedNumbers {
    std::string columns;
    std::string scale;
    std::string tail;
};

void takeNumber(const char* option, const std::string& typed, double least, double most, double& number)
{
    if (typed.empty())
        return;
    const std::optional<double> read = parseNumber(typed);
    if (!read || *read < least || *read > most)
        throw RenderError(std::string(option) + " takes a number from " + fixedText(least, 1) + " to " +
                          fixedText(most, 1) + ", not " + inQuotes(typed));
    number = *read;
}

void declare(CLI::App& app, AuditionOptions& options, TypedNumbers& numbers)
{
    app.add_option("FOLDER", options.root, "Folder of preset sources")->type_name("")->required();
    app.add_option("--only", options.only, "Only presets whose folder and name hold this; repeatable")
        ->type_name("TEXT")
        ->allow_extra_args(false);
    app.add_option("--forgive", options.forgiven,
                   "A preset (\"Folder/Name\") whose faults are known; repeatable")
        ->type_name("NAME")
        ->allow_extra_args(false);
    app.add_option("--stage", options.stage, "Whole preset on which section presets are heard")
        ->type_name("FILE");
    app.add_option("--sheet", options.sheet, "PNG file for a contact sheet")->type_name("FILE");
    app.add_option("--columns", numbers.columns, "Presets in a row of the sheet, 6 unless given")
        ->type_name("N");
    app.add_option("--scale", numbers.scale, "Size of the sheet, 0.2 to 4")->type_name("X");
    app.add_option("--tail", numbers.tail, "Silence behind each sound, 8 unless given")->type_name("SECONDS");
    app.add_option("--samples", options.samples, "Folder of the recordings; those it lacks are synthesised")
        ->type_name("FOLDER");
    app.add_option("--plugin", options.plugin, "CLAP module to load instead of the built or installed one")
        ->type_name("FILE");
    app.add_flag("--materials", options.materials, "A line for each sound, not only for all together");
    app.add_flag("--check", options.check, "Only see whether the plug-in can read all presets");
    app.add_flag("-q,--quiet", options.quiet, "No progress");
}

}  // namespace

std::optional<AuditionOptions> parseAuditionOptions(int argumentCount, const char* const* arguments,
                                                    std::ostream& out)
{
    AuditionOptions options;
    TypedNumbers numbers;
    CLI::App app(description, "sordelin-audition");
    app.footer(examples);
    declare(app, options, numbers);
    try {
        app.parse(argumentCount, arguments);
    } catch (const CLI::CallForHelp&) {
        out << app.help();
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw RenderError(error.what());
    }
    double columns = options.columns;
    takeNumber("--columns", numbers.columns, 1.0, 50.0, columns);
    options.columns = static_cast<int>(columns);
    takeNumber("--scale", numbers.scale, 0.2, 4.0, options.sheetScale);
    takeNumber("--tail", numbers.tail, 0.5, 120.0, options.tailSeconds);
    return options;
}
