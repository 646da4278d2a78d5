#include "core/ControllerMapping.h"

#include "foundation/BinaryDataReader.h"
#include "foundation/BinaryDataWriter.h"

#include <cstddef>
#include <string_view>

namespace {

constexpr std::string_view magic = "MVCM";
constexpr std::int32_t version = 1;

bool isController(int number) noexcept { return number >= 0 && number < ControllerMapping::controllerCount; }

}  // namespace

ControllerMapping::ControllerMapping()
{
    for (auto& target : map)
        target.store(none, std::memory_order_relaxed);
    events.push_back(&change);
}

bool ControllerMapping::read(BinaryDataReader& reader)
{
    if (!reader.readMagic(magic))
        return false;
    const ScopedUpdate bracket(*this);
    for (int controller = 0; controller < controllerCount; ++controller) {
        const std::int32_t target = reader.readInt();
        if (!reader.good())
            break;
        place(controller, target);
    }
    return true;
}

void ControllerMapping::write(BinaryDataWriter& writer) const
{
    writer.writeMagic(magic, version);
    for (int controller = 0; controller < controllerCount; ++controller)
        writer.writeInt(targetOf(controller));
}

void ControllerMapping::reset()
{
    const ScopedUpdate bracket(*this);
    for (int controller = 0; controller < controllerCount; ++controller)
        set(controller, none);
}

void ControllerMapping::assign(int controller, std::int32_t target)
{
    if (isController(controller) && targetOf(controller) == target)
        return;
    const ScopedUpdate bracket(*this);
    place(controller, target);
}

void ControllerMapping::place(int controller, std::int32_t target)
{
    for (int other = 0; other < controllerCount; ++other) {
        if (other != controller && targetOf(other) == target)
            set(other, none);
    }
    if (isController(controller))
        set(controller, target);
}

void ControllerMapping::set(int controller, std::int32_t target)
{
    if (targetOf(controller) == target)
        return;
    map[static_cast<std::size_t>(controller)].store(target, std::memory_order_relaxed);
    change.raised = true;
    changed();
}

int ControllerMapping::controllerOf(std::int32_t target) const noexcept
{
    for (int controller = 0; target != none && controller < controllerCount; ++controller) {
        if (targetOf(controller) == target)
            return controller;
    }
    return -1;
}

std::int32_t ControllerMapping::targetOf(int controller) const noexcept
{
    return isController(controller)
               ? map[static_cast<std::size_t>(controller)].load(std::memory_order_relaxed)
               : none;
}
