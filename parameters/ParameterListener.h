#pragma once

#include "foundation/Realtime.h"

class AbstractPluginParameter;

/// Hears of the values that a parameter delivers to the engine. Thread: the one that delivers.
class ParameterListener {
public:
    /// @param signalOrRaw  a float parameter's signal, an indexed parameter's raw value
    virtual void parameterDelivered(AbstractPluginParameter& parameter,
                                    float signalOrRaw) noexcept REALTIME = 0;

protected:
    ~ParameterListener() = default;
};
