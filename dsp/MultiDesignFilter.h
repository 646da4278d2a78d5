#pragma once

#include "dsp/BiQuadFilter.h"
#include "dsp/DesignFilter.h"
#include "dsp/FilterStyles.h"
#include "dsp/GenericFilter.h"

/// A filter that changes its characteristic: the first ones are lanes of a design filter that it shares with
/// its siblings, the last one is a clean filter of its own. Thread: audio.
class MultiDesignFilter : public GenericFilter {
public:
    /// @param sharedFilter  of all filters with the same controls; outlives this
    MultiDesignFilter(wave::Environment& owner, DesignFilter& sharedFilter, const FilterStyles& filterStyles);

    void propertyChanged(AbstractProperty& property) override;

    /// True for a characteristic without a clipper.
    bool isClean() const noexcept REALTIME { return characteristic.value() >= styles.size(); }

    Property<int> characteristic;  // 0..styles.size(), the last one clean

private:
    DesignFilter& shared;
    const FilterStyles& styles;
    BiQuadFilter clean;
};
