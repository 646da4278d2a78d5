#include "parameters/NumActiveParameter.h"

#include <utility>

void NumActiveParameter::addEntryObjects(std::vector<wave::Producer*> objects)
{
    entryObjects.push_back(std::move(objects));
}

void NumActiveParameter::deliverValue(float newValue) noexcept
{
    IndexedPluginParameter::deliverValue(newValue);
    const auto active = static_cast<std::size_t>(format.positionOf(newValue));
    for (const auto& objects : entryObjects)
        for (std::size_t i = 0; i < objects.size(); ++i)
            if (objects[i])
                objects[i]->setEnabled(i < active);
}
