// A number that stands for all commands that a program has sent so far: names, tags, arguments and
// their order. The same on every machine; addresses do not count.
//
// A sum of products with odd constants, one for each argument, folded into the sum of the commands
// before. It tells programs apart that came to differ, not those that somebody made to agree.
#pragma once

#include <array>
#include <cstdint>

#include "runtime/value.h"

namespace kavo::recording {

// Which commands bring answers from outside.
enum class Asks : uint8_t { nothing, key, chance, folder };

class Fingerprint {
public:
  // The command's name must be one of the program's own constants: it is known by its address.
  Asks add(const char* name, const qor_slot* slots, const uint32_t* tags, int64_t count) {
    const Name& known = look_up(name);
    uint64_t sum = (value_ ^ known.hash) * multiplier(most_arguments);
    for (int64_t i = 0; i < count; ++i)
      sum += (bits_of(slots[i], tags[i]) + tags[i]) * multiplier(i);
    value_ = sum ^ sum >> 29U;
    return known.asks;
  }

  uint64_t value() const { return value_; }

private:
  struct Name {
    const char* text = nullptr;
    uint64_t hash = 0;
    Asks asks = Asks::nothing;
  };
  static constexpr int64_t most_arguments = 6;

  // Odd, and without a pattern: by splitmix64 from the argument's index.
  static constexpr uint64_t multiplier(int64_t index) {
    uint64_t mixed = (static_cast<uint64_t>(index) + 1) * 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ mixed >> 30U) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ mixed >> 27U) * 0x94D049BB133111EBU;
    return (mixed ^ mixed >> 31U) | 1U;
  }

  static uint64_t bits_of(const qor_slot& slot, uint32_t tag) {
    return tag <= QOR_TAG_FLOAT64 ? static_cast<uint64_t>(slot.i64) : hash_of(slot, tag);
  }
  static uint64_t hash_of(const qor_slot& slot, uint32_t tag);

  const Name& look_up(const char* name) {
    const auto address = reinterpret_cast<uintptr_t>(name);
    Name& known = names_[(address ^ address >> 6U) % names_.size()];
    if (known.text != name)
      meet(name, known);
    return known;
  }
  static void meet(const char* name, Name& known);

  uint64_t value_ = 0;
  std::array<Name, 256> names_;
};

} // namespace kavo::recording
