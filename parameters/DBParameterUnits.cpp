#include "parameters/DBParameterUnits.h"

#include "parameters/NumberText.h"

void DBParameterUnit::configure(FloatValueFormat& format) const { format.textFormatter = dbText; }

void DBRangeParameterUnit::configure(FloatValueFormat& format) const { format.numberFormat = "%.2f"; }
