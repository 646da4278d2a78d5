#pragma once

#include "parameters/GenericParameterOwner.h"

#include <vector>

/// The parameters of one thing: a delay line, a filter, a modulation source. They are members of a subclass,
/// which builds them with the set as their owner; the set hands everything on to its own owner. Thread: main,
/// but for `parameterChanged`.
class PluginParameterSet : public GenericParameterOwner {
public:
    /// The set's name is that of its group.
    PluginParameterSet(GenericParameterOwner& owner, std::string setName);
    PluginParameterSet(const PluginParameterSet&) = delete;
    PluginParameterSet& operator=(const PluginParameterSet&) = delete;

    /// Gives the parameters their ranges, curves, units, items and help texts. Called once, when the whole
    /// tree stands.
    virtual void initialise() {}

    /// Sets every parameter to the value of its counterpart. `other` is a set of the same class.
    void copyValuesFrom(const PluginParameterSet& other);
    void resetToDefaults();

    void beginChange() override { parent.beginChange(); }
    void endChange() override { parent.endChange(); }
    int addParameter(AbstractPluginParameter& parameter) override;
    void addAlias(AbstractPluginParameter& parameter, std::string_view alias) override;
    int addResponder(ParameterResponder& responder) override { return parent.addResponder(responder); }
    int registerGroup(std::string_view groupName) override { return parent.registerGroup(groupName); }
    int parameterCount() const override { return static_cast<int>(parameters.size()); }
    /// @param i  0..parameterCount() - 1, in the order of construction
    AbstractPluginParameter& parameterAt(int i) const override
    {
        return *parameters[static_cast<std::size_t>(i)];
    }
    int groupIndex() const override { return group; }
    const std::string& name() const override { return ownName; }
    void parameterChanged(int index, float value, int flags) noexcept REALTIME override
    {
        parent.parameterChanged(index, value, flags);
    }

protected:
    enum class Grouping { Own, OfOwner };
    /// @param grouping  OfOwner for a set within a set, whose parameters stand in the outer one's group
    PluginParameterSet(GenericParameterOwner& owner, std::string setName, Grouping grouping);

private:
    GenericParameterOwner& parent;
    const std::string ownName;
    const int group;
    std::vector<AbstractPluginParameter*> parameters;
};
