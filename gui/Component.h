#pragma once

#include "foundation/Property.h"

#include <cstdint>
#include <vector>

namespace gui {

class UserInterface;

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

    UserInterface& userInterface;

protected:
    std::vector<Component*> linkedComponents;
};

}  // namespace gui
