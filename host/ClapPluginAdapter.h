#pragma once

#include "abi/Clap.h"
#include "foundation/LockFreeQueue.h"
#include "host/ClapEventScan.h"
#include "host/MainThreadDelivery.h"
#include "host/UnifiedPluginAdapter.h"

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

/// The one object that a CLAP host sees of an instance.
class ClapPluginAdapter : private UnifiedPluginAdapter, private ClapEventScan::Sink {
public:
    /// Makes an instance for `host`; the halves of the plug-in come with `init`. The host ends it by
    /// `destroy`.
    static const clap_plugin_t* create(const clap_host_t& host, const clap_plugin_descriptor_t& descriptor);

private:
    static constexpr int maxInputChannels = 32;
    static constexpr int maxOutputChannels = 16;

    /// What waits for the host: one event of either kind.
    union OutEvent {
        clap_event_header_t header;
        clap_event_param_value_t value;
        clap_event_param_gesture_t gesture;
    };
    static_assert(sizeof(OutEvent) == 56);

    struct HostExtensions {
        const clap_host_params_t* params = nullptr;
        const clap_host_latency_t* latency = nullptr;
        const clap_host_track_info_t* trackInfo = nullptr;
        const clap_host_state_t* state = nullptr;
        const clap_host_preset_load_t* presetLoad = nullptr;
    };
    /// Who has told of the track so far.
    enum class TrackInfo { Unknown, FromProject, FromTrack };

    /// The channels of one host block; null is silence, or nobody listening.
    struct Channels {
        const float* inputs[maxInputChannels] = {};
        float* outputs[maxOutputChannels] = {};
        int outputCount = 0;
        bool inputSilent = true;
    };

    ClapPluginAdapter(const clap_host_t& clapHost, const clap_plugin_descriptor_t& descriptor);

    static ClapPluginAdapter& of(const clap_plugin_t* plugin)
    {
        return *static_cast<ClapPluginAdapter*>(plugin->plugin_data);
    }

    /// The same for calls on the main thread, where what waits for that thread comes first.
    static ClapPluginAdapter& onMainThread(const clap_plugin_t* plugin)
    {
        of(plugin).deliverPending();
        return of(plugin);
    }

    // The instance's life. Thread: main, but for the marked ones.
    bool init();
    bool activate(double sampleRate, std::uint32_t maxFrames);
    void deactivate() { active = false; }
    void reset() noexcept REALTIME;                                              // audio
    clap_process_status process(const clap_process_t& block) noexcept REALTIME;  // audio
    static const void* extension(const char* id);
    /// Does what other threads have asked of the main thread, if this is it.
    void deliverPending();

    // Steps of `process`.
    void gatherChannels(const clap_process_t& block, Channels& channels) noexcept REALTIME;
    void gatherOutputs(const clap_process_t& block, Channels& channels) const noexcept REALTIME;
    void passTransport(const clap_event_transport_t* transport) noexcept REALTIME;
    unsigned renderBlock(const clap_process_t& block, Channels& channels) noexcept REALTIME;
    void drainOutEvents(const clap_output_events_t* out) noexcept REALTIME;

    // Ports.
    void buildAudioPorts();
    int inputChannelCount() const noexcept REALTIME { return inputPortCount * plugin->channelCount(); }
    /// The ports as they are in a channel layout. False if there is no such port.
    bool portInfo(int layout, std::uint32_t index, bool isInput, clap_audio_port_info_t* info) const;

    // State and presets.
    bool saveState(const clap_ostream_t* stream);
    bool loadState(const clap_istream_t* stream);
    bool loadPreset(std::uint32_t kind, const char* location);

    // The track.
    void trackInfoChanged();
    void setProjectLocation(const clap_project_location_element_t* path, std::uint32_t count);

    // Parameters.
    void flush(const clap_input_events_t* in, const clap_output_events_t* out) noexcept;
    void flushAtRest(const clap_input_events_t* in) noexcept;
    void queueOutEvent(const OutEvent& event) noexcept;
    void queueGesture(int index, std::uint16_t type);
    AbstractPluginParameter* parameterOf(clap_id id) const noexcept REALTIME;

    // ClapEventScan::Sink
    void applyParameter(clap_id id, double value) noexcept REALTIME override;
    void queueMidi(std::uint8_t status, std::uint8_t data1, std::uint8_t data2,
                   std::int32_t offset) noexcept REALTIME override;

    // UnifiedPluginAdapter
    std::unique_ptr<GenericPlugin> createPlugin() override;
    std::unique_ptr<GenericPluginProcessor> createProcessor() override;
    void setParameter(int index, float value) noexcept override;
    void beginParameterGesture(int index) override;
    void endParameterGesture(int index) override;
    void latencyChanged() override;
    void stateChanged(GenericPlugin::StateChange change) override;
    void parameterChanged(int index) override;

    static const clap_plugin_audio_ports_t audioPortsTable;
    static const clap_plugin_audio_ports_config_t audioPortsConfigTable;
    static const clap_plugin_note_ports_t notePortsTable;
    static const clap_plugin_params_t paramsTable;
    static const clap_plugin_latency_t latencyTable;
    static const clap_plugin_tail_t tailTable;
    static const clap_plugin_audio_ports_config_info_t audioPortsConfigInfoTable;
    static const clap_plugin_state_t stateTable;
    static const clap_plugin_preset_load_t presetLoadTable;
    static const clap_plugin_track_info_t trackInfoTable;
    static const clap_plugin_project_location_t projectLocationTable;
    static const clap_plugin_timer_support_t timerTable;
    static const clap_plugin_posix_fd_support_t descriptorTable;

    clap_plugin_t clapPlugin{};
    const clap_host_t& host;
    HostExtensions hostExtensions;
    int inputPortCount = 0;
    std::unique_ptr<MainThreadDelivery> delivery;
    std::atomic<bool> active{false};
    bool latencyChangePending = false;
    LockFreeQueue<OutEvent> outEvents{1024, 65536};
    // What the host had no room for, and takes first the next time. Thread: that of `process` and `flush`.
    std::optional<OutEvent> refusedEvent;
    int tailSamples = 0;  // -1: endless
    TrackInfo trackInfo = TrackInfo::Unknown;
    TrackContext trackContext;
    TrackContext projectContext;
};
