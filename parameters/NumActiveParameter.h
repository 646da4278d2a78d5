#pragma once

#include "parameters/IndexedPluginParameter.h"
#include "wave/Producer.h"

#include <vector>

/// How many entries of a list are in use. It keeps the engine's objects of the others disabled, so that they
/// cost nothing.
class NumActiveParameter : public IndexedPluginParameter<int> {
public:
    using IndexedPluginParameter::IndexedPluginParameter;

    /// Makes a further group of objects follow the entries: `objects[i]`, which may be null, belongs to entry
    /// i. Not owned. Thread: main, before values are delivered.
    void addEntryObjects(std::vector<wave::Producer*> objects);

    void deliverValue(float newValue) noexcept REALTIME override;

private:
    std::vector<std::vector<wave::Producer*>> entryObjects;
};
