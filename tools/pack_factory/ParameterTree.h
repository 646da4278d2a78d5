#pragma once

#include "core/ComponentPresets.h"
#include "modulation/ModulationMatrixOwner.h"
#include "parameters/ParameterCollection.h"
#include "presets/PresetParameterCollection.h"
#include "product/SordelinComponentPresets.h"
#include "product/SordelinInfo.h"
#include "product/SordelinParameters.h"

#include <string>
#include <string_view>

/// The product's parameters at their defaults, by themselves: no instance of the plug-in is made, nor
/// anything of the user's read.
class ParameterTree : public GenericParameterOwner {
public:
    ParameterTree()
    {
        parameters.initialise();
        whole.signature = sordelinInfo().code;
        for (int i = 0; i < list.count(); ++i)
            whole.add(list.at(i));
        addSordelinComponentPresets(sections, parameters, whole.signature);
    }

    // GenericParameterOwner

    void beginChange() override {}
    void endChange() override {}
    int addParameter(AbstractPluginParameter& parameter) override { return list.add(parameter); }
    void addAlias(AbstractPluginParameter& parameter, std::string_view alias) override
    {
        parameter.aliases.emplace_back(alias);
    }
    int addResponder(ParameterResponder&) override { return responders++; }
    int registerGroup(std::string_view) override { return 0; }
    int parameterCount() const override { return list.count(); }
    AbstractPluginParameter& parameterAt(int i) const override { return list.at(i); }
    int groupIndex() const override { return 0; }
    const std::string& name() const override { return noName; }
    void parameterChanged(int, float, int) noexcept override {}

private:
    const std::string noName;
    int responders = 0;
    ParameterCollection list;
    ModulationMatrixOwner modulation;

public:
    SordelinParameters parameters{*this, modulation};
    PresetParameterCollection whole{*this};  // what a preset of the whole plug-in holds
    ComponentPresets sections{*this};
};
