#include "product/FilterCombo.h"

namespace {

// Inputs of the routers.
enum SecondInput { BehindFirst, BesideFirst };
enum Heard { Second, Both, First };

}  // namespace

FilterCombo::FilterCombo(wave::Environment& environment, std::array<DesignFilter*, 2> sharedFilters,
                         const FilterStyles& styles, int channel)
    : routing(FilterRouting::Serial, this),
      first(environment, *sharedFilters[0], styles),
      second(environment, *sharedFilters[1], styles),
      secondInput(environment, 2),
      parallelMixer(environment),
      outputRouter(environment, 3),
      channelIndex(channel)
{
    secondInput.setSource(BehindFirst, first);
    second.input = &secondInput;
    parallelMixer.add(0.5f, &first);
    parallelMixer.add(0.5f, &second);
    outputRouter.setSource(Second, second);
    outputRouter.setSource(Both, parallelMixer);
    outputRouter.setSource(First, first);
}

void FilterCombo::setInput(wave::Producer& source) noexcept
{
    first.input = &source;
    secondInput.setSource(BesideFirst, source);
}

void FilterCombo::propertyChanged(AbstractProperty&)
{
    const bool perChannel = routing.value() == FilterRouting::PerChannel;
    secondInput.index.assign(routing.value() == FilterRouting::Serial ? BehindFirst : BesideFirst);
    if (routing.value() == FilterRouting::Parallel)
        outputRouter.index.assign(Both);
    else
        outputRouter.index.assign(perChannel && channelIndex == 0 ? First : Second);
}
