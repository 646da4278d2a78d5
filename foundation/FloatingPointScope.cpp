#include "foundation/FloatingPointScope.h"

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace {

#if defined(__SSE2__)
constexpr unsigned flushResults = 0x8000;   // FTZ
constexpr unsigned flushOperands = 0x0040;  // DAZ

unsigned long long readControl() noexcept { return _mm_getcsr(); }
void writeControl(unsigned long long control) noexcept { _mm_setcsr(static_cast<unsigned>(control)); }
constexpr unsigned long long flushBits = flushResults | flushOperands;
#elif defined(__aarch64__)
unsigned long long readControl() noexcept
{
    unsigned long long control;
    __asm__ volatile("mrs %0, fpcr" : "=r"(control));
    return control;
}
void writeControl(unsigned long long control) noexcept { __asm__ volatile("msr fpcr, %0" ::"r"(control)); }
constexpr unsigned long long flushBits = 1ull << 24;  // FZ
#else
unsigned long long readControl() noexcept { return 0; }
void writeControl(unsigned long long) noexcept {}
constexpr unsigned long long flushBits = 0;
#endif

}  // namespace

FloatingPointScope::FloatingPointScope() noexcept : saved(readControl()) { writeControl(saved | flushBits); }

FloatingPointScope::~FloatingPointScope() { writeControl(saved); }
