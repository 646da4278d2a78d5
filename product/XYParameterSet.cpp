#include "product/XYParameterSet.h"

#include "product/SordelinModulationIds.h"

XYParameterSet::XYParameterSet(GenericParameterOwner& owner, int controller)
    : PluginParameterSet(owner, "XY Controller " + std::to_string(controller + 1)),
      horizontal(this, name() + " Hor"),
      vertical(this, name() + " Ver")
{}

void XYParameterSet::initialise()
{
    horizontal.setRange(-1.0f, 1.0f, 0.0f);
    horizontal.helpText = "The pad's place from left to right.";
    vertical.setRange(-1.0f, 1.0f, 0.0f);
    vertical.helpText = "The pad's place from bottom to top.";
}

XYParameterSetList::XYParameterSetList(GenericParameterOwner& owner, ModulationMatrixOwner& modulation)
    : SourceParameterSetList<XYParameterSet>(owner, "XY Controllers", modulation,
                                             {SordelinSources::xyHorizontal(0), 2}, {0, 0})
{
    for (int controller = 0; controller < SordelinLimits::xyControllers; ++controller)
        addSet(std::make_unique<XYParameterSet>(owner, controller));
    numActive.setRange(0, count(), 0);
    numActive.helpText = "The number of XY controllers in use.";
}
