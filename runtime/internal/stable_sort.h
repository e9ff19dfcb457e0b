// Sorting numbers with something attached, stably and in linear time.
#pragma once

#include <cstdint>
#include <span>

namespace qor {

// `key` decides, `payload` travels along.
struct Sortable {
  uint64_t key;
  double payload;
};

// Keys order as the numbers do; both zeros have the same one. Not for NaN.
uint64_t sort_key(double number);

void sort_stably(std::span<Sortable> items);

} // namespace qor
