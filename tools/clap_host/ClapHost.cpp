#include "clap_host/ClapHost.h"

#include <algorithm>
#include <string_view>

ClapHost::AudioScope::AudioScope(ClapHost& host) noexcept : owner(host)
{
    owner.audioThread = std::this_thread::get_id();
}

ClapHost::AudioScope::~AudioScope() { owner.audioThread = std::thread::id(); }

ClapHost::ClapHost(std::uint32_t offeredExtensions)
    : offered(offeredExtensions), mainThread(std::this_thread::get_id()), audioThread(std::thread::id())
{
    hostRecord.clap_version = {1, 2, 5};
    hostRecord.host_data = this;
    hostRecord.name = "Sordelin Offline Host";
    hostRecord.vendor = "Morvelane";
    hostRecord.url = "";
    hostRecord.version = "1.0";
    hostRecord.get_extension = [](const clap_host_t* host, const char* id) {
        return self(host).extension(id);
    };
    hostRecord.request_restart = [](const clap_host_t* host) { ++self(host).calls.restartRequests; };
    hostRecord.request_process = [](const clap_host_t* host) { ++self(host).calls.processRequests; };
    hostRecord.request_callback = [](const clap_host_t* host) { ++self(host).calls.callbackRequests; };

    threadCheckTable.is_main_thread = [](const clap_host_t* host) { return self(host).onMainThread(); };
    threadCheckTable.is_audio_thread = [](const clap_host_t* host) { return self(host).onAudioThread(); };

    paramsTable.rescan = [](const clap_host_t* host, clap_param_rescan_flags flags) {
        self(host).require(self(host).onMainThread(), "params.rescan off the main thread");
        self(host).calls.rescanFlags |= flags;
        ++self(host).calls.rescans;
    };
    paramsTable.clear = [](const clap_host_t* host, clap_id, clap_param_clear_flags) {
        self(host).require(self(host).onMainThread(), "params.clear off the main thread");
        ++self(host).calls.clears;
    };
    paramsTable.request_flush = [](const clap_host_t* host) {
        self(host).require(!self(host).onAudioThread(), "params.request_flush on the audio thread");
        ++self(host).calls.flushRequests;
    };
    latencyTable.changed = [](const clap_host_t* host) {
        self(host).require(self(host).onMainThread(), "latency.changed off the main thread");
        self(host).require(self(host).stage == Stage::Activating, "latency.changed outside activate");
        ++self(host).calls.latencyChanges;
    };
    stateTable.mark_dirty = [](const clap_host_t* host) {
        self(host).require(self(host).onMainThread(), "state.mark_dirty off the main thread");
        ++self(host).calls.dirtyMarks;
    };
    presetLoadTable.loaded = [](const clap_host_t* host, std::uint32_t, const char* location, const char*) {
        self(host).require(self(host).onMainThread(), "preset_load.loaded off the main thread");
        self(host).calls.loadedPresets.emplace_back(location);
    };
    presetLoadTable.on_error = [](const clap_host_t* host, std::uint32_t, const char*, const char*,
                                  std::int32_t, const char* message) {
        self(host).require(self(host).onMainThread(), "preset_load.on_error off the main thread");
        self(host).calls.presetErrors.emplace_back(message);
    };
    logTable.log = [](const clap_host_t* host, clap_log_severity severity, const char* message) {
        self(host).require(!self(host).onAudioThread(), "a log line from the audio thread");
        const std::lock_guard guard(self(host).textLock);
        self(host).logged.push_back(std::to_string(severity) + ": " + message);
    };
    fillMainLoopTables();
}

void ClapHost::fillMainLoopTables()
{
    timerTable.register_timer = [](const clap_host_t* host, std::uint32_t, clap_id* id) {
        return self(host).addTimer(id);
    };
    timerTable.unregister_timer = [](const clap_host_t* host, clap_id id) {
        return self(host).removeTimer(id);
    };
    descriptorTable.register_fd = [](const clap_host_t* host, int descriptor, clap_posix_fd_flags_t) {
        return self(host).addDescriptor(descriptor);
    };
    descriptorTable.modify_fd = [](const clap_host_t* host, int descriptor, clap_posix_fd_flags_t) {
        return std::ranges::count(self(host).watched, descriptor) != 0;
    };
    descriptorTable.unregister_fd = [](const clap_host_t* host, int descriptor) {
        return self(host).removeDescriptor(descriptor);
    };
}

bool ClapHost::mayRegister()
{
    require(onMainThread(), "a timer or descriptor comes or goes off the main thread");
    require(stage != Stage::InLoop, "a timer or descriptor comes or goes within a call of the main loop");
    return !refusing;
}

bool ClapHost::addTimer(clap_id* id)
{
    if (!mayRegister())
        return false;
    *id = nextTimer++;
    timerIds.push_back(*id);
    return true;
}

bool ClapHost::removeTimer(clap_id id)
{
    mayRegister();
    const bool known = std::erase(timerIds, id) != 0;
    require(known, "unregister_timer of a timer that there isn't");
    return known;
}

bool ClapHost::addDescriptor(int descriptor)
{
    if (!mayRegister())
        return false;
    require(std::ranges::count(watched, descriptor) == 0, "register_fd of a descriptor that is watched");
    watched.push_back(descriptor);
    return true;
}

bool ClapHost::removeDescriptor(int descriptor)
{
    mayRegister();
    const bool known = std::erase(watched, descriptor) != 0;
    require(known, "unregister_fd of a descriptor that isn't watched");
    return known;
}

std::vector<std::string> ClapHost::requestedExtensions() const
{
    const std::lock_guard guard(textLock);
    return requested;
}

std::vector<std::string> ClapHost::logLines() const
{
    const std::lock_guard guard(textLock);
    return logged;
}

std::vector<std::string> ClapHost::violations() const
{
    std::vector<std::string> lines;
    const auto count = std::min<std::size_t>(violationCount, violationTexts.size());
    for (std::size_t i = 0; i < count; ++i) {
        // The count rises before the text is there: another thread may be between the two.
        if (const char* text = violationTexts[i])
            lines.emplace_back(text);
    }
    return lines;
}

ClapHost& ClapHost::self(const clap_host_t* host) noexcept
{
    return *static_cast<ClapHost*>(host->host_data);
}

const void* ClapHost::extension(const char* id)
{
    require(stage != Stage::Creating, "get_extension before init");
    {
        const std::lock_guard guard(textLock);
        requested.emplace_back(id);
    }
    struct Entry {
        std::string_view id;
        std::uint32_t bit;
        const void* table;
    };
    const std::array entries{Entry{CLAP_EXT_THREAD_CHECK, HostExtensions::threadCheck, &threadCheckTable},
                             Entry{CLAP_EXT_PARAMS, HostExtensions::params, &paramsTable},
                             Entry{CLAP_EXT_LATENCY, HostExtensions::latency, &latencyTable},
                             Entry{CLAP_EXT_STATE, HostExtensions::state, &stateTable},
                             Entry{CLAP_EXT_PRESET_LOAD, HostExtensions::presetLoad, &presetLoadTable},
                             Entry{CLAP_EXT_LOG, HostExtensions::log, &logTable},
                             Entry{CLAP_EXT_TIMER_SUPPORT, HostExtensions::timers, &timerTable},
                             Entry{CLAP_EXT_POSIX_FD_SUPPORT, HostExtensions::descriptors, &descriptorTable}};
    const auto found = std::ranges::find(entries, std::string_view(id), &Entry::id);
    return found != entries.end() && (offered & found->bit) ? found->table : nullptr;
}

void ClapHost::require(bool allowed, const char* violation) noexcept
{
    if (allowed)
        return;
    const std::uint32_t place = violationCount++;
    if (place < violationTexts.size())
        violationTexts[place] = violation;
}

bool ClapHost::onMainThread() const noexcept
{
    return std::this_thread::get_id() == mainThread && !onAudioThread();
}

bool ClapHost::onAudioThread() const noexcept { return std::this_thread::get_id() == audioThread.load(); }
