#include "render/ModuleLocator.h"

#include "clap_host/QuotedText.h"
#include "render/RenderError.h"

#include <cstdlib>
#include <string>
#include <string_view>

namespace {

constexpr const char* moduleName = "Sordelin 2.clap";

void addFolderBesideTool(std::vector<std::filesystem::path>& folders)
{
    std::error_code error;
    const auto tool = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error)
        folders.push_back((tool.parent_path() / SORDELIN_MODULE_FOLDER).lexically_normal());
}

void addEach(std::vector<std::filesystem::path>& folders, std::string_view list)
{
    while (!list.empty()) {
        const auto end = std::min(list.find(':'), list.size());
        if (end > 0)
            folders.emplace_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
}

}  // namespace

std::vector<std::filesystem::path> moduleFolders()
{
    std::vector<std::filesystem::path> folders;
    addFolderBesideTool(folders);
    if (const char* list = std::getenv("CLAP_PATH"))
        addEach(folders, list);
    if (const char* home = std::getenv("HOME"))
        folders.push_back(std::filesystem::path(home) / ".clap");
    folders.emplace_back("/usr/local/lib/clap");
    folders.emplace_back("/usr/lib/clap");
    return folders;
}

std::filesystem::path locateModule(const std::vector<std::filesystem::path>& folders)
{
    std::string searched;
    for (const auto& folder : folders) {
        std::error_code unreadable;
        if (std::filesystem::exists(folder / moduleName, unreadable))
            return folder / moduleName;
        searched += (searched.empty() ? "" : ", ") + folder.string();
    }
    throw RenderError("can't find " + inQuotes(moduleName) + " in " + searched + "; --plugin FILE names one");
}
