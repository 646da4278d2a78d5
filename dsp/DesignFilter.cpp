#include "dsp/DesignFilter.h"

DesignFilter::DesignFilter(wave::Environment& owner, const StateVariableTables& sharedTables,
                           const Style& firstStyle)
    : StateVariableFilter(owner, sharedTables), style(&firstStyle)
{
    changeCharacter(style->clipTable());
}

void DesignFilter::setStyle(const Style& newStyle) noexcept
{
    style = &newStyle;
    changeCharacter(style->clipTable());
}

FilterCharacter DesignFilter::characterAt(float frequency, float peak) const noexcept
{
    const auto found = style->characteristicAt(frequency, peak);
    return {found.resonance, found.cubic, found.clipDrive};
}
