#pragma once

#if defined(_MSC_VER) && !defined(__clang__)
#include <intrin.h>
#endif

// What no standard has a word for, and each compiler another one. Nothing else in the sources
// depends on the compiler.

/// Before a function: keeps it out of its callers.
#if defined(_MSC_VER) && !defined(__clang__)
#define QM_OUT_OF_LINE __declspec(noinline)
#else
#define QM_OUT_OF_LINE [[gnu::noinline]]
#endif

/// Before a thread_local variable that is looked at all the time: it is reached like any other one,
/// also from a shared library. Such a library is loaded with the program, or has but a few of them.
#if defined(__linux__)
#define QM_QUICK_THREAD_LOCAL [[gnu::tls_model("initial-exec")]]
#else
#define QM_QUICK_THREAD_LOCAL
#endif

namespace quillmark {

/// Has the processor fetch memory that will be read soon. Changes nothing but speed; any address
/// will do.
inline void prefetch([[maybe_unused]] const void* address) {
#if defined(__GNUC__) || defined(__clang__)
    __builtin_prefetch(address);
#elif defined(_M_X64)
    _mm_prefetch(static_cast<const char*>(address), _MM_HINT_T0);
#endif
}

}  // namespace quillmark
