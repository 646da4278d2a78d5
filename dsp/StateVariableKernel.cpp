#include "dsp/StateVariableKernel.h"

#if defined(SORDELIN_FMA_KERNEL)
#include "dsp/StateVariableKernelFma.h"
#endif

const StateVariableKernel& StateVariableKernel::best()
{
#if defined(SORDELIN_FMA_KERNEL)
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"))
        return stateVariableKernelFma;
#endif
    return common();
}
