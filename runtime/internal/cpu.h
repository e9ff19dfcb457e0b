// What the processor can do, asked once.
#pragma once

#if defined(__x86_64__)
#include <cpuid.h>
#endif

namespace qor {

// The SHA instructions, with the SSSE3 and SSE4.1 that go with them. Asked through cpuid because
// not every compiler's __builtin_cpu_supports knows "sha".
inline bool has_sha_instructions() {
#if defined(__x86_64__)
  static const bool answer = [] {
    unsigned eax = 0;
    unsigned ebx = 0;
    unsigned ecx = 0;
    unsigned edx = 0;
    return __get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx) != 0 && (ebx & bit_SHA) != 0 &&
           __builtin_cpu_supports("ssse3") != 0 && __builtin_cpu_supports("sse4.1") != 0;
  }();
  return answer;
#else
  return false;
#endif
}

inline bool has_avx2() {
#if defined(__x86_64__)
  return __builtin_cpu_supports("avx2") != 0;
#else
  return false;
#endif
}

} // namespace qor
