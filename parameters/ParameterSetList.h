#pragma once

#include "parameters/AbstractParameterSetList.h"
#include "parameters/OwnedParameterSets.h"

template <class T>
using ParameterSetList = OwnedParameterSets<T, AbstractParameterSetList>;
