// While it lives, numbers too small to be normal count as zero: a tail that dies away would
// otherwise cost a hundred times the time of one that sounds.
#pragma once

#include <cstdint>

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

namespace kavo::sound {

class FlushToZero {
public:
  FlushToZero() : before_(read()) { write(before_ | flush); }
  ~FlushToZero() { write(before_); }
  FlushToZero(const FlushToZero&) = delete;
  FlushToZero& operator=(const FlushToZero&) = delete;
  FlushToZero(FlushToZero&&) = delete;
  FlushToZero& operator=(FlushToZero&&) = delete;

private:
#if defined(__SSE__)
  static constexpr uint64_t flush = 0x8040; // FTZ and DAZ
  static uint64_t read() {
    return _mm_getcsr();
  }
  static void write(uint64_t value) {
    _mm_setcsr(static_cast<unsigned int>(value));
  }
#elif defined(__aarch64__)
  static constexpr uint64_t flush = uint64_t{1} << 24;
  static uint64_t read() {
    uint64_t value;
    __asm__ volatile("mrs %0, fpcr" : "=r"(value));
    return value;
  }
  static void write(uint64_t value) {
    __asm__ volatile("msr fpcr, %0" : : "r"(value));
  }
#else
  static constexpr uint64_t flush = 0;
  static uint64_t read() {
    return 0;
  }
  static void write(uint64_t) {}
#endif

  uint64_t before_;
};

} // namespace kavo::sound
