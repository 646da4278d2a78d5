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
    // Lowered first: a post that comes too late for the loop below asks anew.
    awaited.exchange(false);
    int left = capacity;
    for (Message message{}; left > 0 && messages.pop(message); --left)
        received.fire(&message);
    delivered.fire();
    delivering = false;
    if (left == 0)
        wake();  // there may be more
}
