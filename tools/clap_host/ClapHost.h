#pragma once

#include "abi/Clap.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// The extensions that a host may offer, as bits, so that tests can walk through every subset.
struct HostExtensions {
    static constexpr std::uint32_t none = 0;
    static constexpr std::uint32_t threadCheck = 1u << 0;
    static constexpr std::uint32_t params = 1u << 1;
    static constexpr std::uint32_t latency = 1u << 2;
    static constexpr std::uint32_t state = 1u << 3;
    static constexpr std::uint32_t log = 1u << 4;
    static constexpr std::uint32_t timers = 1u << 5;
    static constexpr std::uint32_t descriptors = 1u << 6;
    static constexpr std::uint32_t presetLoad = 1u << 7;
    static constexpr std::uint32_t all = (1u << 8) - 1;
};

/// How often a plug-in made each call. Written by any thread, read by the main thread.
struct HostCalls {
    std::atomic<int> restartRequests{0};
    std::atomic<int> processRequests{0};
    std::atomic<int> callbackRequests{0};
    std::atomic<int> rescans{0};
    std::atomic<std::uint32_t> rescanFlags{0};  // of all rescans together
    std::atomic<int> clears{0};
    std::atomic<int> flushRequests{0};
    std::atomic<int> latencyChanges{0};
    std::atomic<int> dirtyMarks{0};
    std::vector<std::string> loadedPresets;  // paths; main thread
    std::vector<std::string> presetErrors;   // messages; main thread
};

/// The host's side of one plug-in instance: the record given to `create_plugin` and the extensions behind it.
///
/// It never acts on a request by itself; it counts, and it notes each call that CLAP forbids in that place.
class ClapHost {
public:
    /// The constructing thread is the main thread from here on.
    /// @param offered  bits of HostExtensions; for all others `get_extension` gives null
    explicit ClapHost(std::uint32_t offered = HostExtensions::all);
    ClapHost(const ClapHost&) = delete;
    ClapHost& operator=(const ClapHost&) = delete;

    /// While one exists, the thread that made it is the audio thread, and only that.
    class AudioScope {
    public:
        explicit AudioScope(ClapHost& host) noexcept;
        ~AudioScope();
        AudioScope(const AudioScope&) = delete;
        AudioScope& operator=(const AudioScope&) = delete;

    private:
        ClapHost& owner;
    };

    const clap_host_t* record() const noexcept { return &hostRecord; }

    /// What the plug-in is being asked to do: `get_extension` is forbidden before `init`, and a change of
    /// latency is allowed during `activate` alone. Within a call of the main loop for a timer or a descriptor
    /// none of them may come or go.
    enum class Stage { Creating, Ready, Activating, InLoop };
    void enter(Stage next) noexcept { stage = next; }

    /// From now on the main loop takes no more timers or descriptors. Thread: main.
    void refuseRegistrations() noexcept { refusing = true; }
    /// What the main loop has to serve, in the order of registration. Thread: main.
    const std::vector<clap_id>& timers() const noexcept { return timerIds; }
    const std::vector<int>& descriptors() const noexcept { return watched; }

    HostCalls calls;
    /// Ids in the order in which the plug-in asked for them. Thread: main.
    std::vector<std::string> requestedExtensions() const;
    /// What the plug-in logged, each as "severity: message". Thread: main.
    std::vector<std::string> logLines() const;
    /// One line per forbidden call, at most 64. Empty for a plug-in that behaves. Thread: main.
    std::vector<std::string> violations() const;

private:
    static ClapHost& self(const clap_host_t* host) noexcept;
    const void* extension(const char* id);
    void require(bool allowed, const char* violation) noexcept;
    bool onMainThread() const noexcept;
    bool onAudioThread() const noexcept;
    void fillMainLoopTables();
    bool mayRegister();
    bool addTimer(clap_id* id);
    bool removeTimer(clap_id id);
    bool addDescriptor(int descriptor);
    bool removeDescriptor(int descriptor);

    const std::uint32_t offered;
    const std::thread::id mainThread;
    std::atomic<std::thread::id> audioThread;
    std::atomic<Stage> stage{Stage::Creating};

    clap_host_t hostRecord{};
    clap_host_thread_check_t threadCheckTable{};
    clap_host_params_t paramsTable{};
    clap_host_latency_t latencyTable{};
    clap_host_state_t stateTable{};
    clap_host_log_t logTable{};
    clap_host_preset_load_t presetLoadTable{};
    clap_host_timer_support_t timerTable{};
    clap_host_posix_fd_support_t descriptorTable{};

    bool refusing = false;
    clap_id nextTimer = 100;  // no id that anybody would guess
    std::vector<clap_id> timerIds;
    std::vector<int> watched;

    mutable std::mutex textLock;  // guards the two lists
    std::vector<std::string> requested;
    std::vector<std::string> logged;

    // Fixed places: a violation on the audio thread must not allocate.
    std::array<std::atomic<const char*>, 64> violationTexts{};
    std::atomic<std::uint32_t> violationCount{0};
};
