#pragma once

#include "foundation/DeferredEventQueue.h"

#include <atomic>
#include <cstdint>

/// What other threads ask the main thread of a plug-in to do. However much they ask, nothing is forgotten:
/// what a full queue refuses is made up for when it is emptied.
class PluginMessageQueue {
public:
    enum Kind : std::int32_t { LatencyChanged = 0, SelectPreset = 1, ParameterChanged = 2 };

    /// Thread: main.
    class Receiver {
    public:
        virtual ~Receiver() = default;
        virtual void latencyMessage() = 0;
        /// Only the last one that was asked for. @param bank  0..16383  @param program  0..127
        virtual void presetMessage(int bank, int program) = 0;
        /// @param index  of a parameter, or a negative number for all of them, with a reset by that number
        virtual void parameterMessage(int index) = 0;
    };

    explicit PluginMessageQueue(Receiver& messageReceiver);
    PluginMessageQueue(const PluginMessageQueue&) = delete;
    PluginMessageQueue& operator=(const PluginMessageQueue&) = delete;

    // Thread: any.

    void postLatencyChange() noexcept REALTIME { post(LatencyChanged, 0); }
    void postPreset(int bank, int program) noexcept REALTIME;
    void postParameterChange(int index) noexcept REALTIME { post(ParameterChanged, index); }

    /// For whoever delivers.
    DeferredEventQueue& events() noexcept { return queue; }

private:
    static constexpr std::int64_t noPreset = -1;
    static constexpr int allParameters = -1;  // without a reset

    void post(Kind kind, std::int64_t argument) noexcept REALTIME;
    void dispatch(void* message);
    void selectLatest(std::int64_t preset);
    void makeUpForLost(void*);

    Receiver& receiver;
    DeferredEventQueue queue;
    std::atomic<std::int64_t> latestPreset{noPreset};
    std::atomic<std::uint32_t> lostKinds{0};    // one bit for each kind
    std::atomic<int> lostReset{allParameters};  // the hardest of the lost ones
};
