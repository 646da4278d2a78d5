#pragma once

#include "dsp/DesignFilterStyle.h"
#include "dsp/StateVariableFilter.h"

/// The state-variable filter with the tables of a characteristic. Thread: audio.
class DesignFilter : public StateVariableFilter {
public:
    using Style = DesignFilterStyle;

    /// @param firstStyle  outlives the filter, as do all that follow
    DesignFilter(wave::Environment& owner, const StateVariableTables& sharedTables, const Style& firstStyle);

    /// The states stay: only the tables and the clipper change under what is running.
    void setStyle(const Style& newStyle) noexcept REALTIME;

protected:
    FilterCharacter characterAt(float frequency, float peak) const noexcept REALTIME override;
    float styleGainValue() const noexcept REALTIME override { return style->gain(); }

private:
    const Style* style;
};
