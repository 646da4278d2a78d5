#include "core/GenericPlugin.h"

#include <chrono>
#include <thread>
#include <utility>

void GenericPlugin::setListener(Listener* newListener)
{
    listener.store(newListener);
    while (listenerCalls.load() != 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void GenericPlugin::tellListener(int messageCode, int argument) noexcept
{
    listenerCalls.fetch_add(1);
    if (Listener* present = listener.load())
        present->message(messageCode, argument);
    listenerCalls.fetch_sub(1);
}

void GenericPlugin::beginParameterBatch() { batchDepth.fetch_add(1); }

void GenericPlugin::endParameterBatch()
{
    if (batchDepth.fetch_sub(1) != 1)
        return;
    const BatchPending pending = batchPending.exchange(BatchPending::Nothing);
    const int reset = std::exchange(pendingReset, static_cast<int>(WithoutReset));
    if (pending == BatchPending::Nothing)
        return;
    if (pending == BatchPending::ForHost && adapter)
        adapter->parameterChanged(reset);
    tellListener(Listener::ParameterChanged, -1);
}

void GenericPlugin::requestSoftReset()
{
    if (pendingReset != WithHardReset)
        pendingReset = WithSoftReset;
}

void GenericPlugin::parameterValueChanged(int index, float value, int changeFlags) noexcept
{
    parameter(index).deliverValue(value);
    const bool echo = (changeFlags & noEcho) == 0;
    if (batchDepth.load() != 0) {
        // What must reach the host stays so, whatever follows in the same batch.
        auto nothing = BatchPending::Nothing;
        if (echo)
            batchPending.store(BatchPending::ForHost);
        else
            batchPending.compare_exchange_strong(nothing, BatchPending::NotForHost);
        if (batchDepth.load() != 0)
            return;
    }
    if (echo && adapter)
        adapter->parameterChanged(index);
    tellListener(Listener::ParameterChanged, index);
}
