#pragma once

#include "modulation/ModMatrixParamController.h"
#include "product/SordelinPlugin.h"
#include "support/PresetFixture.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

/// A plug-in that loads files put together by hand.
struct SordelinPresetFixture : testing::Test {
    ErrorResult load(const std::string& bytes)
    {
        home.folder.write("Test.mvp", bytes);
        return plugin.loadPreset(PresetInfo(home.folder / "Test.mvp"));
    }
    float value(int index) const { return plugin.parameter(index).currentValue(); }
    std::vector<float> values() const
    {
        std::vector<float> all;
        plugin.storedParameters.readValues(all);
        return all;
    }
    void set(int index, float value) { plugin.parameter(index).setValue(value, announceChange); }
    /// Puts every parameter at some place of its range.
    void scatter(unsigned seed)
    {
        std::mt19937 random(seed);
        for (int i = 0; i < plugin.parameterCount(); ++i) {
            const AbstractPluginParameter& parameter = plugin.parameter(i);
            const float normal = static_cast<float>(random() >> 8) / 16777216.0f;
            set(i, parameter.normalToValue(normal));
        }
    }
    /// The slots in use, as "source > target".
    std::vector<std::string> connections() const
    {
        std::vector<std::string> all;
        for (int i = 0; i < plugin.slots.numActive.value(); ++i) {
            const ModulationSlotParameterSet& slot = plugin.slots[i];
            all.push_back(slot.source.valueText(slot.source.currentValue())
                              .append(" > ")
                              .append(slot.target.valueText(slot.target.currentValue())));
        }
        return all;
    }
    float level(int slot) { return plugin.slotController().level(slot); }

    static constexpr int freeze = 17;
    static constexpr int dry = 704;

    TemporaryHome home;
    SordelinPlugin plugin;
};
