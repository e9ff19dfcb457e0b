// Chance: xoshiro256** 1.0 by David Blackman and Sebastiano Vigna (public domain), its state
// spread from one 64-bit seed by splitmix64 as they recommend.
#pragma once

#include <array>
#include <cstdint>

namespace kavo::host {

class Random {
public:
  using State = std::array<uint64_t, 4>;

  // Any seed will do; the same seed gives the same sequence on every machine.
  explicit Random(uint64_t seed);
  explicit Random(const State& state) : state_(state) {}

  uint64_t next();

  // Uniform in [0, 1), a multiple of 2^-53.
  double next_fraction() { return static_cast<double>(next() >> 11U) * 0x1p-53; }

private:
  State state_;
};

// The seed for a new run: QORRT_SEED when the environment sets it, else from the operating
// system. Throws CommandError when QORRT_SEED is not a whole number of 64 bits without a sign.
uint64_t fresh_seed();

} // namespace kavo::host
