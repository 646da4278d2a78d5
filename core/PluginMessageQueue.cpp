#include "core/PluginMessageQueue.h"

#include <algorithm>

PluginMessageQueue::PluginMessageQueue(Receiver& messageReceiver) : receiver(messageReceiver)
{
    queue.received.addHandler(NotifyEvent::handler(*this, &PluginMessageQueue::dispatch));
    queue.delivered.addHandler(NotifyEvent::handler(*this, &PluginMessageQueue::makeUpForLost));
}

void PluginMessageQueue::postPreset(int bank, int program) noexcept
{
    const std::int64_t preset = (static_cast<std::int64_t>(bank) << 8) | program;
    latestPreset.store(preset);
    post(SelectPreset, preset);
}

void PluginMessageQueue::post(Kind kind, std::int64_t argument) noexcept
{
    if (queue.post(kind, argument))
        return;
    if (kind == ParameterChanged) {
        // All of them stand for one; a harder reset has the lower number.
        const int wanted = std::min(static_cast<int>(argument), allParameters);
        int present = lostReset.load();
        while (wanted < present && !lostReset.compare_exchange_weak(present, wanted)) {
        }
    }
    lostKinds.fetch_or(1u << kind);
    queue.wake();  // what filled the queue may have been delivered since
}

void PluginMessageQueue::dispatch(void* message)
{
    const auto& [kind, argument] = *static_cast<const AsyncEventQueue::Message*>(message);
    if (kind == LatencyChanged)
        receiver.latencyMessage();
    else if (kind == SelectPreset)
        selectLatest(argument);
    else if (kind == ParameterChanged)
        receiver.parameterMessage(static_cast<int>(argument));
}

void PluginMessageQueue::selectLatest(std::int64_t preset)
{
    // What has been superseded would cost the loading of a preset that nobody hears.
    if (preset != noPreset && latestPreset.compare_exchange_strong(preset, noPreset))
        receiver.presetMessage(static_cast<int>(preset >> 8), static_cast<int>(preset & 0xFF));
}

void PluginMessageQueue::makeUpForLost(void*)
{
    const std::uint32_t lost = lostKinds.exchange(0);
    if (lost & 1u << LatencyChanged)
        receiver.latencyMessage();
    if (lost & 1u << SelectPreset)
        selectLatest(latestPreset.load());
    if (lost & 1u << ParameterChanged)
        receiver.parameterMessage(lostReset.exchange(allParameters));
}
