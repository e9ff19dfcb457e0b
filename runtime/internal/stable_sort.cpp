#include "runtime/internal/stable_sort.h"

#include <algorithm>
#include <array>
#include <bit>
#include <memory>
#include <utility>
#include <vector>

namespace qor {
namespace {

// A radix sort, digit by digit from the lowest: six passes take all 64 bits.
constexpr int digit_bits = 11;
constexpr size_t digits = size_t{1} << digit_bits;
constexpr int passes = 6;
constexpr size_t shortest_for_radix = 2048;

size_t digit_of(uint64_t key, int pass) {
  return key >> (pass * digit_bits) & (digits - 1);
}

using Places = std::array<size_t, digits>;

// How often each digit occurs, for all passes at once.
std::vector<Places> count_digits(std::span<const Sortable> items) {
  std::vector<Places> counts(passes);
  for (const auto& item : items)
    for (int pass = 0; pass < passes; ++pass)
      counts[static_cast<size_t>(pass)][digit_of(item.key, pass)] += 1;
  return counts;
}

void to_first_places(Places& counts) {
  size_t place = 0;
  for (auto& count : counts)
    place += std::exchange(count, place);
}

void sort_by_radix(std::span<Sortable> items) {
  const auto spare = std::make_unique_for_overwrite<Sortable[]>(items.size());
  std::span<Sortable> from = items;
  std::span<Sortable> to(spare.get(), items.size());
  auto counts = count_digits(items);
  for (int pass = 0; pass < passes; ++pass) {
    auto& places = counts[static_cast<size_t>(pass)];
    const bool is_one_digit = places[digit_of(items.front().key, pass)] == items.size();
    if (is_one_digit)
      continue;
    to_first_places(places);
    for (const auto& item : from)
      to[places[digit_of(item.key, pass)]++] = item;
    std::swap(from, to);
  }
  if (from.data() != items.data())
    std::ranges::copy(from, items.begin());
}

} // namespace

uint64_t sort_key(double number) {
  constexpr uint64_t sign = uint64_t{1} << 63;
  const auto bits = number == 0.0 ? 0 : std::bit_cast<uint64_t>(number);
  return (bits & sign) != 0 ? ~bits : bits | sign;
}

void sort_stably(std::span<Sortable> items) {
  if (items.size() < shortest_for_radix)
    std::ranges::stable_sort(items, {}, &Sortable::key);
  else
    sort_by_radix(items);
}

} // namespace qor
