#pragma once

#include "foundation/Property.h"

#include <cstdint>
#include <vector>

namespace gui {

class Component;
class UserInterface;

/// Tells a frame on the stack whether a component outlived the handlers that it called. Thread: as for the
/// component.
class ComponentGuard {
public:
    explicit ComponentGuard(Component& guardedComponent);
    ~ComponentGuard();
    ComponentGuard(const ComponentGuard&) = delete;
    ComponentGuard& operator=(const ComponentGuard&) = delete;
    bool IsAlive() const { return component != nullptr; }

private:
    friend class Component;
    Component* component;
    ComponentGuard* next;  // of the same component
};

/// What an interface keeps a list of. Thread: main or render, with the root's lock held.
class Component : public PropertyOwner {
public:
    explicit Component(UserInterface& ui);
    ~Component() override;

    void propertyChanged(AbstractProperty&) override {}
    /// Runs on the thread that drains the queue which `UserInterface::PostUpdate` was told.
    virtual void PostedUpdate(std::intptr_t first, std::intptr_t second);
    /// A linked component dies; the link is already gone.
    virtual void LinkedComponentDeleted(Component& component);

    /// Both hear of the other's end, and a control passes its updates on to the components it is linked with.
    void LinkTo(Component& other);
    void UnlinkFrom(Component& other);
    bool IsLinkedTo(const Component& other) const;
    /// Nobody else owns it: if it still exists when the interface ends, the interface deletes it.
    void DeleteWithInterface() { deletedWithInterface = true; }

    UserInterface& userInterface;

protected:
    /// Parts from all others, who hear of it. Subclasses that the others may look at call it first in their
    /// destructors.
    void UnlinkFromAll();

    std::vector<Component*> linkedComponents;

private:
    friend class ComponentGuard;
    friend class UserInterface;
    ComponentGuard* guards = nullptr;
    bool deletedWithInterface = false;
};

}  // namespace gui
