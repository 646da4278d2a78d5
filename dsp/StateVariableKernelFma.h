#pragma once

#include "dsp/StateVariableKernel.h"

/// The build for x86 processors with AVX2 and fused multiply-add. Nobody else may run it.
extern const StateVariableKernel stateVariableKernelFma;
