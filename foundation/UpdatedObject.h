#pragma once

#include <vector>

class NotifyEvent;

/// Batches the change reports of an object: between `beginUpdate` and `endUpdate` any number of `changed()`
/// calls give one `update()` at the end. A change made during `update()` gives no further round.
class UpdatedObject {
public:
    /// An event that waits for the end of the update.
    struct PendingEvent {
        NotifyEvent* event = nullptr;
        bool raised = false;
        void* argument = nullptr;
    };

    UpdatedObject() = default;
    UpdatedObject(const UpdatedObject&) = delete;
    UpdatedObject& operator=(const UpdatedObject&) = delete;
    virtual ~UpdatedObject() = default;

    void beginUpdate() { ++depth; }
    void endUpdate();
    void changed();

protected:
    /// Reports the changes. The default fires each raised event once and lowers it.
    virtual void update();

    std::vector<PendingEvent*> events;  // not owned

private:
    enum class State { Idle, Dirty, Updating };
    void runUpdate();

    State state = State::Idle;
    int depth = 0;
};

/// Brackets a burst of changes.
class ScopedUpdate {
public:
    explicit ScopedUpdate(UpdatedObject& updatedObject) : object(updatedObject) { object.beginUpdate(); }
    ScopedUpdate(const ScopedUpdate&) = delete;
    ScopedUpdate& operator=(const ScopedUpdate&) = delete;
    ~ScopedUpdate() { object.endUpdate(); }

private:
    UpdatedObject& object;
};
