#include "host/random.h"

#include <sys/random.h>

#include <bit>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <system_error>

#include "host/command.h"

namespace kavo::host {

namespace {

uint64_t splitmix64(uint64_t& state) {
  state += 0x9E3779B97F4A7C15U;
  uint64_t mixed = state;
  mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
  mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
  return mixed ^ (mixed >> 31U);
}

uint64_t parsed_seed(std::string_view text) {
  uint64_t seed = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, seed);
  if (text.empty() || rest != end || error != std::errc())
    throw CommandError("QORRT_SEED must be a whole number from 0 to 18446744073709551615, got " +
                       shown(text));
  return seed;
}

uint64_t system_seed() {
  uint64_t seed = 0;
  ssize_t received = 0;
  do
    received = getrandom(&seed, sizeof seed, 0);
  while (received < 0 && errno == EINTR);
  if (received != sizeof seed)
    throw CommandError(std::string("no random seed from the system: ") + std::strerror(errno));
  return seed;
}

} // namespace

Random::Random(uint64_t seed) {
  for (uint64_t& word : state_)
    word = splitmix64(seed);
}

uint64_t Random::next() {
  const uint64_t result = std::rotl(state_[1] * 5, 7) * 9;
  const uint64_t shifted = state_[1] << 17U;
  state_[2] ^= state_[0];
  state_[3] ^= state_[1];
  state_[1] ^= state_[2];
  state_[0] ^= state_[3];
  state_[2] ^= shifted;
  state_[3] = std::rotl(state_[3], 45);
  return result;
}

uint64_t fresh_seed() {
  const char* text = std::getenv("QORRT_SEED");
  return text != nullptr ? parsed_seed(text) : system_seed();
}

} // namespace kavo::host
