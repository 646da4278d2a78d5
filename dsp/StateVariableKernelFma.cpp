#define SORDELIN_VECTOR_VARIANT avx2

#include "dsp/StateVariableKernelFma.h"

#include "dsp/StateVariableLoop.h"

constexpr StateVariableKernel stateVariableKernelFma{"fma", &StateVariableLoop::run,
                                                     &StateVariableLoop::runInSeries};
