#pragma once

#include "clap_host/ClapHost.h"
#include "clap_host/ClapModule.h"
#include "clap_host/ClapParameters.h"
#include "clap_host/EventList.h"
#include "clap_host/EventOutput.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

/// What one call of `process` gives to a plug-in. Nothing is copied.
struct ClapBlock {
    std::span<const clap_audio_buffer_t> inputs;  // one per input port
    std::span<clap_audio_buffer_t> outputs;       // one per output port
    std::uint32_t frames = 0;
    const EventList* events = nullptr;  // null: none
    EventOutput* output = nullptr;      // null: what the plug-in sends is dropped
    const clap_event_transport_t* transport = nullptr;
    std::int64_t steadyTime = -1;  // frames, -1 for unknown
};

/// One plug-in from `create_plugin` to `destroy`, with the host that it sees.
///
/// Destruction stops, deactivates and destroys as far as needed. A call that CLAP forbids in the present
/// state throws ClapHostError and doesn't reach the plug-in. Thread: main, but for the audio operations
/// below.
class ClapInstance {
public:
    enum class State { Inactive, Active, Processing };

    /// Creates and initialises; throws ClapHostError if the plug-in refuses either. `module` outlives this.
    /// @param hostExtensions  bits of HostExtensions that the host offers
    explicit ClapInstance(const ClapModule& module, std::uint32_t hostExtensions = HostExtensions::all);
    ~ClapInstance();
    ClapInstance(const ClapInstance&) = delete;
    ClapInstance& operator=(const ClapInstance&) = delete;

    ClapHost& host() noexcept { return hostSide; }
    const clap_plugin_t& plugin() const noexcept { return *created; }
    State state() const noexcept { return currentState; }

    /// The table of a plug-in extension, or null.
    template <typename Table>
    const Table* extension(const char* id) const
    {
        return static_cast<const Table*>(created->get_extension(created.get(), id));
    }

    /// Read at the first call, then kept.
    const ClapParameters& parameters();
    std::vector<clap_audio_port_info_t> inputPorts() const { return ports(true); }
    std::vector<clap_audio_port_info_t> outputPorts() const { return ports(false); }
    /// Frames; 0 if the plug-in doesn't tell.
    std::uint32_t latency() const;
    /// Frames; 0 if the plug-in doesn't tell, from 0x7FFFFFFF up without end.
    std::uint32_t tail() const;

    /// @param sampleRate  Hz
    /// @param maxFrames   the longest block that `process` will be given, at least `minFrames`, which is 1 or
    /// more
    void activate(double sampleRate, std::uint32_t minFrames, std::uint32_t maxFrames);
    void deactivate();
    /// One round of a main loop: calls `on_main_thread` if the plug-in has asked for it since the last time,
    /// then `on_fd` for each descriptor that can be read, and `on_timer` for each timer.
    void runMainThread();

    // Audio operations: the calling thread counts as the audio thread meanwhile. They allocate nothing.
    void startProcessing();
    void stopProcessing();
    void reset();
    clap_process_status process(const ClapBlock& block);
    /// Applies events without sound; on the audio thread if active, else on the main thread.
    /// @param output  null: what the plug-in sends is dropped
    void flush(const EventList& events, EventOutput* output = nullptr);

private:
    struct Destroy {
        void operator()(const clap_plugin_t* plugin) const noexcept { plugin->destroy(plugin); }
    };

    std::vector<clap_audio_port_info_t> ports(bool input) const;
    void serveDescriptors();
    void serveTimers();
    void require(State expected, const char* operation) const;

    ClapHost hostSide;
    std::unique_ptr<const clap_plugin_t, Destroy> created;
    const clap_plugin_params_t* paramsExtension = nullptr;
    std::optional<ClapParameters> parameterList;
    State currentState = State::Inactive;
    std::uint32_t maxBlockFrames = 0;
    int callbacksServed = 0;
    const EventList noEvents;
    EventOutput dropped;
};
