#include "render/PresetLocator.h"

#include "clap_host/NearestNames.h"
#include "clap_host/PresetIndexer.h"
#include "clap_host/QuotedText.h"
#include "render/RenderError.h"

#include <algorithm>

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> presetsOf(const ClapModule& module)
{
    PresetIndexer indexer(module);
    std::vector<fs::path> files;
    if (!indexer.init())
        return files;
    for (const PresetIndexer::Location& location : indexer.locations) {
        std::error_code ignored;  // a folder that isn't there holds nothing
        for (const auto& entry : fs::recursive_directory_iterator(location.path, ignored)) {
            for (const PresetIndexer::FileType& type : indexer.fileTypes) {
                if (entry.is_regular_file(ignored) && entry.path().extension() == "." + type.extension)
                    files.push_back(entry.path());
            }
        }
    }
    std::ranges::sort(files);
    return files;
}

}  // namespace

fs::path locatePreset(const ClapModule& module, const fs::path& pathOrName)
{
    if (fs::exists(pathOrName))
        return fs::absolute(pathOrName);
    const std::vector<fs::path> files = presetsOf(module);
    std::vector<std::string> names;
    for (const fs::path& file : files) {
        if (file.stem() == pathOrName)
            return file;
        names.push_back(file.stem().string());
    }
    throw RenderError("there is no preset " + inQuotes(pathOrName.string()) +
                      didYouMean(pathOrName.string(), names));
}
