#include "gui/Component.h"

#include "gui/UserInterface.h"

#include <algorithm>

namespace gui {

ComponentGuard::ComponentGuard(Component& guardedComponent)
    : component(&guardedComponent), next(guardedComponent.guards)
{
    guardedComponent.guards = this;
}

ComponentGuard::~ComponentGuard()
{
    if (!component)
        return;
    ComponentGuard** place = &component->guards;
    while (*place != this)
        place = &(*place)->next;
    *place = next;
}

Component::Component(UserInterface& ui) : userInterface(ui) { ui.AddComponent(*this); }

Component::~Component()
{
    UnlinkFromAll();
    userInterface.RemoveComponent(*this);
    for (ComponentGuard* guard = guards; guard; guard = guard->next)
        guard->component = nullptr;
}

void Component::PostedUpdate(std::intptr_t, std::intptr_t) {}

void Component::LinkedComponentDeleted(Component&) {}

void Component::LinkTo(Component& other)
{
    if (&other == this || IsLinkedTo(other))
        return;
    linkedComponents.push_back(&other);
    other.linkedComponents.push_back(this);
}

void Component::UnlinkFrom(Component& other)
{
    std::erase(linkedComponents, &other);
    std::erase(other.linkedComponents, this);
}

bool Component::IsLinkedTo(const Component& other) const
{
    return std::find(linkedComponents.begin(), linkedComponents.end(), &other) != linkedComponents.end();
}

void Component::UnlinkFromAll()
{
    while (!linkedComponents.empty()) {
        Component& partner = *linkedComponents.back();
        UnlinkFrom(partner);
        partner.LinkedComponentDeleted(*this);
    }
}

}  // namespace gui
