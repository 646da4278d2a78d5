#include "product/XYSources.h"

#include "product/SordelinModulationIds.h"

XYSources::XYSources(wave::Environment& environment, ModulationMatrix& matrix,
                     XYParameterSetList& controllers)
{
    std::vector<wave::Producer*> entries[2];
    for (int controller = 0; controller < controllers.count(); ++controller) {
        FloatPluginParameter* const parameters[] = {&controllers[controller].horizontal,
                                                    &controllers[controller].vertical};
        for (int axis = 0; axis < 2; ++axis) {
            auto made = std::make_unique<FloatParameterSource>(environment, 0.0f);
            made->parameter.setRange(-1.0f, 1.0f);
            parameters[axis]->bind(*made);
            matrix.setSource(SordelinSources::xyHorizontal(controller) + axis, made.get());
            entries[axis].push_back(made.get());
            axes.push_back(std::move(made));
        }
    }
    for (auto& axisEntries : entries)
        controllers.numActive.addEntryObjects(std::move(axisEntries));
}

float XYSources::displayValue(int source) noexcept
{
    return (axes[static_cast<std::size_t>(source)]->parameter.target() + 1.0f) * 0.5f;
}
