#pragma once

/// Marks a function that the audio thread may reach: it neither allocates, locks, throws nor logs.
/// Compilers that can check the promise do.
#if defined(__clang__) && __clang_major__ >= 20
#define REALTIME [[clang::nonblocking]]
#else
#define REALTIME
#endif
