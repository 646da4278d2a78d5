#include "foundation/UpdatedObject.h"

#include "foundation/NotifyEvent.h"

void UpdatedObject::endUpdate()
{
    if (--depth == 0 && state == State::Dirty)
        runUpdate();
}

void UpdatedObject::changed()
{
    if (depth != 0)
        state = State::Dirty;
    else if (state != State::Updating)
        runUpdate();
}

void UpdatedObject::runUpdate()
{
    state = State::Updating;
    update();
    state = State::Idle;
}

void UpdatedObject::update()
{
    for (PendingEvent* pending : events) {
        if (!pending->raised)
            continue;
        pending->raised = false;
        pending->event->fire(pending->argument);
    }
}
