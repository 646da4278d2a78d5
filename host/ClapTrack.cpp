// What the host says of the track and of the project that an instance stands in.
#include "host/ClapPluginAdapter.h"
#include "host/ClapText.h"

namespace {

std::uint32_t colorWord(const clap_color_t& color)
{
    return std::uint32_t{color.alpha} << 24 | std::uint32_t{color.red} << 16 |
           std::uint32_t{color.green} << 8 | std::uint32_t{color.blue};
}

}  // namespace

// A host that tells the project's structure has told the track with it, and better.
void ClapPluginAdapter::trackInfoChanged()
{
    clap_track_info_t info{};
    if (trackInfo == TrackInfo::FromProject || !plugin->hasFlag(GenericPluginInfo::WantsTrackInfo) ||
        !hostExtensions.trackInfo || !hostExtensions.trackInfo->get(&host, &info))
        return;
    trackInfo = TrackInfo::FromTrack;
    const bool hasName = info.flags & CLAP_TRACK_INFO_HAS_TRACK_NAME;
    const bool hasColor = info.flags & CLAP_TRACK_INFO_HAS_TRACK_COLOR;
    if (hasName)
        trackContext.trackName = textOf(info.name);
    if (hasColor)
        trackContext.color = colorWord(info.color);
    if (hasName || hasColor)
        plugin->setTrackContext(trackContext);
}

void ClapPluginAdapter::setProjectLocation(const clap_project_location_element_t* path, std::uint32_t count)
{
    projectContext.path.clear();
    for (std::uint32_t i = 0; path && i < count; ++i) {
        const clap_project_location_element_t& element = path[i];
        if (element.kind == CLAP_PROJECT_LOCATION_PROJECT) {
            projectContext.projectName = textOf(element.id);
            continue;
        }
        if (element.kind == CLAP_PROJECT_LOCATION_TRACK) {
            trackInfo = TrackInfo::FromProject;
            projectContext.trackDepth = static_cast<int>(projectContext.path.size());
            projectContext.trackName = textOf(element.name);
            projectContext.color = colorWord(element.color);
        }
        projectContext.path.push_back(element.index);
    }
    plugin->setTrackContext(projectContext);
}

const clap_plugin_track_info_t ClapPluginAdapter::trackInfoTable{
    .changed = [](const clap_plugin_t* p) { of(p).trackInfoChanged(); },
};

const clap_plugin_project_location_t ClapPluginAdapter::projectLocationTable{
    .set = [](const clap_plugin_t* p, const clap_project_location_element_t* path,
              uint32_t count) { of(p).setProjectLocation(path, count); },
};
