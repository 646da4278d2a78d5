#include "parameters/PlainParameterUnits.h"

#include "dsp/Conversions.h"

void OctavesParameterUnit::configure(FloatValueFormat& format) const
{
    format.shown = {octavesToSemitones, semitonesToOctaves};
}

void PercentParameterUnit::configure(FloatValueFormat& format) const
{
    format.numberFormat = "*2f";
    format.separator = "";
}

void RatioParameterUnit::configure(FloatValueFormat& format) const
{
    format.numberFormat = "%.2f";
    format.separator = "";
}

void SlopeParameterUnit::configure(FloatValueFormat& format) const { format.numberFormat = "%.1f"; }
