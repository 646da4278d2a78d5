#pragma once

#include "HostileEvents.h"
#include "clap_host/ClapEvent.h"
#include "clap_host/EventList.h"
#include "stress/RandomEvents.h"

#include <array>
#include <vector>

/// One call of `process` as a careless host makes it: any length, any set of ports and channels, any numbers
/// in them, buffers shared or missing, and any events. It looks at what comes back.
class HostileBlock {
public:
    /// @param parameters  of the plug-in; outlives this
    HostileBlock(Random& numbers, const std::vector<ClapParameter>& parameters);

    /// Lays out the next block of at most `longest` frames, which is the most that any call may have.
    void arrange(std::uint32_t longest);
    clap_process_t* record() { return &block; }
    const clap_input_events_t* inputEvents() const { return block.in_events; }
    const clap_output_events_t* outputEvents() const { return block.out_events; }

    /// What is wrong with what the plug-in left, or null.
    const char* fault() const;
    /// The same of the events alone, for a flush.
    const char* eventFault() const { return outputEventFault; }

    static constexpr std::uint32_t mostFrames = 8192;

private:
    static constexpr std::uint32_t maxPorts = 3;
    static constexpr std::uint32_t maxChannels = 3;
    static constexpr std::uint32_t guardFrames = 16;
    static constexpr float guard = 12345.5f;
    static constexpr float unwritten = 7.5e30f;  // nothing that comes out of the plug-in
    using Channel = std::vector<float>;
    struct Port {
        std::array<Channel, maxChannels> channels;
        std::array<Channel, maxChannels> before;  // what the channels held
        std::array<float*, maxChannels> pointers{};
        std::array<double*, maxChannels> doubles{};
    };

    void arrangeInputs();
    void arrangeOutputs();
    void arrangeEvents();
    void arrangeTransport();
    /// Fills a channel with a kind of signal; true if it is constant.
    bool fillSignal(Channel& channel);
    const char* inputFault() const;
    const char* outputFault() const;
    bool isShared(const float* samples) const;
    bool isGuarded(const Channel& channel) const;
    static bool push(const clap_output_events_t* list, const clap_event_header_t* event);

    Random& random;
    const std::vector<ClapParameter>& parameters;
    RandomEvents orderly;
    EventList orderlyEvents{4096};
    HostileEvents hostileEvents;
    clap_output_events_t output{};
    std::uint32_t lastOutputTime = 0;
    bool refusesOutput = false;
    const char* outputEventFault = nullptr;

    std::array<Port, maxPorts> inputPorts;
    Port outputPort;
    std::vector<double> someDoubles;
    std::array<clap_audio_buffer_t, maxPorts> inputs{};
    std::array<clap_audio_buffer_t, 1> outputs{};
    clap_event_transport_t transport{};
    clap_process_t block{};
};
