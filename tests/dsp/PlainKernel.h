#pragma once

#include "dsp/StateVariableKernel.h"

/// The build of the filter's loop in plain code.
const StateVariableKernel& plainKernel();
