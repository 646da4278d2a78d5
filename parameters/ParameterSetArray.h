#pragma once

#include "parameters/AbstractParameterSetArray.h"
#include "parameters/OwnedParameterSets.h"

template <class T>
using ParameterSetArray = OwnedParameterSets<T, AbstractParameterSetArray>;
