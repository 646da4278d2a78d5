#include "render/RenderOptions.h"

#include "clap_host/NumberText.h"
#include "clap_host/QuotedText.h"
#include "render/RenderError.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>

namespace {

const char* const description =
    "Renders a sound file through the Sordelin 2 delay.\n"
    "Reads what libsndfile knows, mono or stereo. The output's extension chooses its format:\n"
    ".wav (32-bit float), .flac, .aif, .aiff (24 bits) or .ogg.\n";

const char* const examples = "\nExample:\n"
                             "  sordelin-render guitar.wav echoes.flac --tempo 96 --plot echoes.png \\\n"
                             "      --set \"Delay 1 Time=350 ms\" --set \"Delay 1 Feedback=0.4\"";

/// Numbers as they were typed: CLI11 would read them by the locale.
struct TypedNumbers {
    std::string tempo;
    std::string songPosition;
    std::string tail;
    std::string block;
};

void declareFiles(CLI::App& app, RenderOptions& options)
{
    app.add_option("INPUT", options.input, "Sound file to read")->type_name("");
    app.add_option("OUTPUT", options.output, "Sound file to write")->type_name("");
    app.add_option("--sidechain", options.sideChain,
                   "Sound file for the side chain, of the input's sample rate")
        ->type_name("FILE");
    app.add_option("--plot", options.plot, "PNG file for a picture: both waveforms and a spectrogram")
        ->type_name("FILE");
    app.add_option("--plugin", options.plugin, "CLAP module to load instead of the built or installed one")
        ->type_name("FILE");
    app.add_flag("-y,--overwrite", options.overwrite, "Replace existing output files");
}

void declareSettings(CLI::App& app, RenderOptions& options, TypedNumbers& numbers)
{
    app.add_option("--load-state", options.loadState, "A plug-in's state, as a host's project keeps it")
        ->type_name("FILE");
    app.add_option("--preset", options.preset, "A preset, over that state")->type_name("FILE");
    app.add_option("--save-state", options.saveState, "File for the state after the rendering")
        ->type_name("FILE");
    app.add_option("--set", options.settings,
                   "\"Name=value\": a parameter before the first sample; repeatable")
        ->type_name("TEXT")
        ->allow_extra_args(false);
    app.add_option("--automate", options.automation, "CSV file of seconds,parameter,value; sample-accurate")
        ->type_name("FILE");
    app.add_option("--midi", options.midi,
                   "Standard MIDI File to play along, at its own tempo; sample-accurate")
        ->type_name("FILE");
    app.add_option("--tempo", numbers.tempo, "Tempo of a song that plays along, 10 to 1000")
        ->type_name("BPM");
    app.add_option("--song-position", numbers.songPosition,
                   "Where that song begins to play, 0 to 100000; at its start unless given")
        ->type_name("BEATS");
    app.add_option("--block", numbers.block, "Frames per processing block, 1 to 16384; 128 unless given")
        ->type_name("N");
    app.add_option("--tail", numbers.tail,
                   "Time to go on after the input, 0 to 3600; unless given,\n"
                   "until the output has stayed below -80 dBFS for 0.5 s, at most 30 s")
        ->type_name("SECONDS");
    app.add_flag("--list-parameters", options.listParameters, "Print all parameters and exit");
    app.add_flag("-q,--quiet", options.quiet, "No progress, no summary");
}

/// Nothing for an option that wasn't given.
std::optional<double> numberOption(const char* option, const std::string& typed, double least, double most)
{
    if (typed.empty())
        return std::nullopt;
    const std::optional<double> number = parseNumber(typed);
    if (!number || *number < least || *number > most)
        throw RenderError(std::string(option) + " takes a number from " + fixedText(least, 0) + " to " +
                          fixedText(most, 0) + ", not " + inQuotes(typed));
    return number;
}

void takeNumbers(const TypedNumbers& numbers, RenderOptions& options)
{
    options.tempoBpm = numberOption("--tempo", numbers.tempo, 10.0, 1000.0);
    const auto songPosition = numberOption("--song-position", numbers.songPosition, 0.0, 100000.0);
    if (songPosition && !options.tempoBpm)
        throw RenderError("--song-position needs a song: give its --tempo too");
    options.songPositionBeats = songPosition.value_or(0.0);
    options.tailSeconds = numberOption("--tail", numbers.tail, 0.0, 3600.0);
    const auto block = numberOption("--block", numbers.block, 1.0, 16384.0);
    if (block && *block != std::floor(*block))
        throw RenderError("--block takes a whole number, not " + inQuotes(numbers.block));
    options.blockFrames = static_cast<std::uint32_t>(block.value_or(options.blockFrames));
}

void requireDifferent(const std::filesystem::path& written, const std::filesystem::path& read)
{
    std::error_code ignored;  // a file that isn't there is nobody's equal
    if (std::filesystem::equivalent(written, read, ignored))
        throw RenderError("the rendering would replace " + inQuotes(read.string()) + ", which it reads");
}

void requireFiles(const RenderOptions& options)
{
    if (options.listParameters)
        return;
    if (options.input.empty() || options.output.empty())
        throw RenderError(options.input.empty() ? "no input file given; --help tells more"
                                                : "no output file given; --help tells more");
    if (!options.plot.empty() && options.plot.lexically_normal() == options.output.lexically_normal())
        throw RenderError("output and plot are both " + inQuotes(options.output.string()));
    if (!options.saveState.empty() &&
        (options.saveState.lexically_normal() == options.output.lexically_normal() ||
         options.saveState.lexically_normal() == options.plot.lexically_normal()))
        throw RenderError("the state would go where another output goes, to " +
                          inQuotes(options.saveState.string()));
    // A state may be saved over the one that was loaded: that has been read by then.
    for (const auto& written : {options.output, options.plot, options.saveState}) {
        for (const auto& read :
             {options.input, options.sideChain, options.automation, options.midi, options.preset})
            requireDifferent(written, read);
    }
    for (const auto& written : {options.output, options.plot})
        requireDifferent(written, options.loadState);
}

std::string onOneLine(std::string text)
{
    std::ranges::replace(text, '\n', ' ');
    return text;
}

}  // namespace

std::optional<RenderOptions> parseRenderOptions(int argumentCount, const char* const* arguments,
                                                std::ostream& out)
{
    CLI::App app(description, "sordelin-render");
    app.footer(examples);
    RenderOptions options;
    TypedNumbers numbers;
    declareFiles(app, options);
    declareSettings(app, options, numbers);
    try {
        app.parse(argumentCount, arguments);
    } catch (const CLI::CallForHelp&) {
        out << app.help();
        return std::nullopt;
    } catch (const CLI::Error& error) {
        throw RenderError(onOneLine(error.what()));
    }
    takeNumbers(numbers, options);
    requireFiles(options);
    return options;
}
