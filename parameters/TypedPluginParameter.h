#pragma once

#include "foundation/ValueAssignable.h"
#include "parameters/AbstractPluginParameter.h"

/// A parameter that delivers values of type `T`: the signal of a float parameter, the raw value of an indexed
/// one.
template <class T>
class TypedPluginParameter : public AbstractPluginParameter {
public:
    using AbstractPluginParameter::AbstractPluginParameter;

    /// Makes every delivered value go to `target` too, in the order of binding. Not owned. Thread: main,
    /// before values are delivered.
    void bind(ValueAssignable<T>& target) { targets.push_back(&target); }

protected:
    /// Listeners first, then what is bound.
    void deliver(T delivered, float signalOrRaw) noexcept REALTIME
    {
        tellListeners(signalOrRaw);
        for (ValueAssignable<T>* target : targets)
            target->assign(delivered);
    }

private:
    std::vector<ValueAssignable<T>*> targets;
};
