// The loop without vectors, as it stands in where there are none.
#define SORDELIN_PLAIN_FLOAT4
#define SORDELIN_VECTOR_VARIANT plain

#include "PlainKernel.h"

#include "dsp/StateVariableLoop.h"

const StateVariableKernel& plainKernel()
{
    static constexpr StateVariableKernel kernel{"plain", &StateVariableLoop::run,
                                                &StateVariableLoop::runInSeries};
    return kernel;
}
