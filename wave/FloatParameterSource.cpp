#include "wave/FloatParameterSource.h"

FloatParameterSource::FloatParameterSource(wave::Environment& owner, float initial)
    : Source(owner, OwnBlock::None), parameter(owner, initial)
{}

void FloatParameterSource::generate(wave::Block*, int count, int) noexcept { show(parameter.render(count)); }

FloatParameterForwarder::FloatParameterForwarder(wave::Environment& owner, FloatParameter& shown)
    : Source(owner, OwnBlock::None), parameter(shown)
{}

void FloatParameterForwarder::generate(wave::Block*, int count, int) noexcept
{
    show(parameter.render(count));
}
