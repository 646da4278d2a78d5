#include "modulation/ModulationMatrix.h"

ModulationMatrix::Target::Target(wave::Environment& environment, const ModulationRange& targetRange)
    : range(targetRange), base(environment, 0.0f), forwarder(environment, base)
{
    base.setRange(range.lower, range.upper, range.span);
    base.setWrapPeriod(range.wrapPeriod);
}

void ModulationMatrix::Target::setParameterSignal(float signal) noexcept
{
    lastSignal = signal;
    base.setValue(signal, FloatParameter::automaticRamp);
    if (changeListener)
        changeListener->baseValueChanged();
}

ModulationMatrix::ModulationMatrix(wave::Environment& environment,
                                   const ModulationConfiguration& modulationConfiguration)
{
    const int count = modulationConfiguration.targetCount();
    targets.reserve(static_cast<std::size_t>(count));
    for (int id = 0; id < count; ++id)
        targets.push_back(std::make_unique<Target>(environment, modulationConfiguration.rangeOf(id)));
}
