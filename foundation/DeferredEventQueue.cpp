#include "foundation/DeferredEventQueue.h"

void DeferredEventQueue::setWaker(Waker* newWaker) noexcept
{
    waker.store(newWaker);
    if (newWaker && awaited.load())
        newWaker->wake();
}

bool DeferredEventQueue::post(std::int32_t kind, std::int64_t argument) noexcept
{
    const bool taken = messages.push({kind, argument}) != 0;
    if (taken)
        wake();
    return taken;
}

void DeferredEventQueue::wake() noexcept
{
    if (awaited.exchange(true))
        return;
    if (Waker* present = waker.load())
        present->wake();
}

void DeferredEventQueue::deliver()
{
    if (delivering)
        return;
    delivering = true;
    // Lowered first: what is posted from here on, and so may come too late for the loop below, asks anew.
    awaited.exchange(false);
    Message message{};
    for (int left = capacity; left > 0 && messages.pop(message); --left)
        received.fire(&message);
    delivered.fire();
    delivering = false;
}
