#pragma once

#include "foundation/Realtime.h"

#include <string>
#include <string_view>

class AbstractPluginParameter;

/// What a controller can move besides the parameters of the list: it answers a value by setting parameters of
/// its own.
class ParameterResponder {
public:
    /// @param value  0..1
    virtual void setNormalised(float value) noexcept REALTIME = 0;

protected:
    ~ParameterResponder() = default;
};

/// Whatever owns parameters: a half of a plug-in, or a set within it. Thread: main, but for
/// `parameterChanged`.
class GenericParameterOwner {
public:
    virtual ~GenericParameterOwner() = default;

    /// Brackets a burst of changes that belong together, for the host and for undo. Brackets nest.
    virtual void beginChange() = 0;
    virtual void endChange() = 0;

    /// Parameters call this when they are built. Not owned.
    /// Returns the place of the parameter in the list of the whole plug-in, which identifies it for good.
    virtual int addParameter(AbstractPluginParameter& parameter) = 0;
    /// Gives a parameter a further name by which presets find it.
    virtual void addAlias(AbstractPluginParameter& parameter, std::string_view name) = 0;
    /// Not owned. Returns its place in the list of the whole plug-in.
    virtual int addResponder(ParameterResponder& responder) = 0;
    /// Returns the number of the group called `name`, a new one if there is none yet.
    virtual int registerGroup(std::string_view name) = 0;

    virtual int parameterCount() const = 0;
    virtual AbstractPluginParameter& parameterAt(int i) const = 0;
    /// The group of the parameters whose owner this is. Group 0 is the one without a name.
    virtual int groupIndex() const = 0;
    virtual const std::string& name() const = 0;

    /// A parameter has taken a new value. Thread: whichever set it.
    /// @param index  in the list of the whole plug-in
    /// @param flags  ParameterChangeFlags, as they were given to `setValue`
    virtual void parameterChanged(int index, float value, int flags) noexcept REALTIME = 0;
};
