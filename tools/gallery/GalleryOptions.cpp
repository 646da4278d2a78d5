#include "gallery/GalleryOptions.h"

#include "clap_host/NearestNames.h"
#include "gallery/Gallery.h"
#include "gallery/GalleryError.h"

#include <CLI/CLI.hpp>

#include <cmath>

namespace gallery {

int FindPage(const std::string& name)
{
    const int page = Gallery::PageOf(name);
    if (page < 0) {
        const auto names = Gallery::PageNames();
        throw GalleryError("there is no page \"" + name + "\"" +
                           didYouMean(name, {names.begin(), names.end()}) + "; --list shows them");
    }
    return page;
}

float FindScale(int percent)
{
    std::string known;
    for (const float scale : gui::DeviceBacking::levelScales) {
        const auto level = static_cast<int>(std::lround(scale * 100.0f));
        if (level == percent)
            return scale;
        known += (known.empty() ? "" : ", ") + std::to_string(level);
    }
    throw GalleryError("the scale is one of " + known + " percent, not " + std::to_string(percent));
}

std::optional<GalleryOptions> ParseGalleryOptions(int argumentCount, const char* const* arguments,
                                                  std::ostream& out)
{
    CLI::App app("Shows every control of the interface in all its states: in a window, or as pictures.",
                 "sordelin-gallery");
    GalleryOptions options;
    std::string page;
    int percent = 100;
    bool list = false;
    app.add_option("--page", page, "The page to begin with, by its name")->type_name("NAME");
    CLI::Option* const scale =
        app.add_option("--scale", percent, "Size in percent: 100, 125, 150, 175, 200, 225, 250 or 300")
            ->type_name("PERCENT");
    CLI::Option* const png =
        app.add_option("--png", options.png, "Write the page as a picture, without a window")
            ->type_name("FILE");
    CLI::Option* const all =
        app.add_option("--all", options.folder, "Write a picture of each page into a folder")
            ->type_name("FOLDER")
            ->excludes(png);
    CLI::Option* const script =
        app.add_option("--script", options.script,
                       "Do what a file says: move, press, release, wheel, key, type, wait, shot, "
                       "page, scale, hold")
            ->type_name("FILE")
            ->excludes(all);
    app.add_flag("--offscreen", options.offscreen, "Run the script without a window, as fast as it goes")
        ->needs(script);
    app.add_flag("--list", list, "List the pages");
    try {
        app.parse(argumentCount, arguments);
    } catch (const CLI::CallForHelp&) {
        out << app.help();
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw GalleryError(error.what());
    }
    if (list) {
        for (const char* name : Gallery::PageNames())
            out << name << '\n';
        return std::nullopt;
    }
    if (!page.empty())
        options.page = FindPage(page);
    options.scale = FindScale(percent);
    options.scaleIsGiven = scale->count() > 0;
    return options;
}

}  // namespace gallery
