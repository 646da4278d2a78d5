#include "dsp/StateVariableLoop.h"

const StateVariableKernel& StateVariableKernel::common()
{
    static constexpr StateVariableKernel kernel{"common", &StateVariableLoop::run,
                                                &StateVariableLoop::runInSeries};
    return kernel;
}
