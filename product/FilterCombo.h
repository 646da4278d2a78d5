#pragma once

#include "dsp/MultiDesignFilter.h"
#include "modulation/Router.h"
#include "modulation/StaticMixer.h"
#include "product/SordelinTypes.h"

#include <array>

/// The two filters of one place in the path of one channel, and how they are joined. A change of routing
/// fades over in 20 ms, as it may stand in a loop. Thread: audio, but for construction and wiring.
class FilterCombo : public PropertyOwner {
public:
    /// @param sharedFilters  one for each filter number, in whose lanes the filters run
    /// @param channel        which of the filters a routing by channel takes, 0 or 1
    FilterCombo(wave::Environment& environment, std::array<DesignFilter*, 2> sharedFilters,
                const FilterStyles& styles, int channel);

    void setInput(wave::Producer& source) noexcept;
    wave::Producer& output() noexcept { return outputRouter; }
    MultiDesignFilter& filter(int number) noexcept { return number == 0 ? first : second; }

    void propertyChanged(AbstractProperty& property) override;

    Property<FilterRouting> routing;

private:
    MultiDesignFilter first;
    MultiDesignFilter second;
    Router secondInput;  // of the second filter: the first one's output, or what comes in
    StaticMixer parallelMixer;
    Router outputRouter;
    int channelIndex;
};
