#pragma once

#include "modulation/AbstractSourceParameterSetList.h"
#include "parameters/OwnedParameterSets.h"

template <class T>
using SourceParameterSetList = OwnedParameterSets<T, AbstractSourceParameterSetList>;
