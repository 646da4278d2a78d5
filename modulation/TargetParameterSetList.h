#pragma once

#include "modulation/AbstractTargetParameterSetList.h"
#include "parameters/OwnedParameterSets.h"

template <class T>
using TargetParameterSetList = OwnedParameterSets<T, AbstractTargetParameterSetList>;
