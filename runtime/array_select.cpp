#include "runtime/array_select.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <string_view>
#include <unordered_set>

#include "runtime/array.h"
#include "runtime/internal/array_slots.h"
#include "runtime/internal/containers.h"
#include "runtime/internal/nesting.h"
#include "runtime/internal/strings.h"

namespace {

uint32_t untagged_flags(const QorArray* array) {
  return array == nullptr ? 0 : array->flags & ~uint32_t{QOR_FLAG_TAGGED};
}

QorArray* new_slice(const QorArray* array, int64_t first, int64_t length) {
  auto* result = qor::new_uninitialised_array(length, untagged_flags(array));
  std::ranges::copy(
      qor::slots_of(array).subspan(static_cast<size_t>(first), static_cast<size_t>(length)),
      result->data);
  return result;
}

// Where an array is cut so that `n` elements lie before it, or -n behind it.
int64_t cut_at(const QorArray* array, int64_t n) {
  const auto length = qor_array_len(array);
  return n >= 0 ? std::min(n, length) : length - std::min(length, n < -length ? length : -n);
}

// Equal numbers have one identity, and so have all NaNs; of references it is the bit pattern.
uint64_t identity(double slot) {
  if (slot == 0.0)
    return 0;
  return std::bit_cast<uint64_t>(std::isnan(slot) ? std::numeric_limits<double>::quiet_NaN()
                                                  : slot);
}

// The elements met so far, by content.
class Elements {
public:
  explicit Elements(const QorArray* like) : has_strings_(qor::has_strings(like)) {}

  // True when it was not there.
  bool add(double slot) {
    return has_strings_ ? texts_.insert(text(slot)).second : numbers_.insert(identity(slot)).second;
  }

  bool contains(double slot) const {
    return has_strings_ ? texts_.contains(text(slot)) : numbers_.contains(identity(slot));
  }

private:
  template<typename T>
  using Set = std::unordered_set<T, std::hash<T>, std::equal_to<>, qor::Allocator<T>>;

  static std::string_view text(double slot) {
    return qor::bytes_of(qor::reference_in<const char>(slot));
  }

  bool has_strings_;
  Set<std::string_view> texts_;
  Set<uint64_t> numbers_;
};

template<typename Keeps>
QorArray* new_kept(const QorArray* array, Keeps keeps) {
  qor::Vector<double> kept;
  std::ranges::copy_if(qor::slots_of(array), std::back_inserter(kept), keeps);
  auto* result = qor::new_uninitialised_array(std::ssize(kept), untagged_flags(array));
  std::ranges::copy(kept, result->data);
  return result;
}

struct Flat {
  qor::Vector<double> slots;
  bool has_strings = false;
  bool has_numbers = false;
};

void flatten_into(Flat& flat, const QorArray* array) {
  const auto slots = qor::slots_of(array);
  if (qor::has_rows(array)) {
    for (int64_t i = 0; i < array->length; ++i)
      flatten_into(flat, qor::row_of(array, i));
    return;
  }
  flat.slots.insert(flat.slots.end(), slots.begin(), slots.end());
  (qor::has_strings(array) ? flat.has_strings : flat.has_numbers) |= !slots.empty();
}

} // namespace

QorArray* qor_array_take(const QorArray* array, int64_t n) {
  const auto cut = cut_at(array, n);
  return n >= 0 ? new_slice(array, 0, cut) : new_slice(array, cut, qor_array_len(array) - cut);
}

QorArray* qor_array_drop(const QorArray* array, int64_t n) {
  const auto cut = cut_at(array, n);
  return n >= 0 ? new_slice(array, cut, qor_array_len(array) - cut) : new_slice(array, 0, cut);
}

QorArray* qor_take_n(const QorArray* array, int64_t n) {
  return qor_array_take(array, std::max<int64_t>(n, 0));
}

QorArray* qor_drop_n(const QorArray* array, int64_t n) {
  return qor_array_drop(array, std::max<int64_t>(n, 0));
}

QorArray* qor_array_diff(const QorArray* a, const QorArray* b) {
  if (qor::has_strings(a) != qor::has_strings(b))
    return new_slice(a, 0, qor_array_len(a));
  Elements others(a);
  for (const double slot : qor::slots_of(b))
    others.add(slot);
  return new_kept(a, [&others](double slot) { return !others.contains(slot); });
}

QorArray* qor_array_unique(const QorArray* array) {
  Elements seen(array);
  return new_kept(array, [&seen](double slot) { return seen.add(slot); });
}

QorArray* qor_array_unique_str(const QorArray* array) {
  return qor::has_strings(array) ? qor_array_unique(array) : qor::new_string_array(0);
}

int64_t qor_array_indexof(const QorArray* array, double value) {
  if (array == nullptr || (array->flags & qor::string_flags) != 0)
    return -1;
  const auto slots = qor::slots_of(array);
  const auto found = std::ranges::find(slots, identity(value), identity);
  return found == slots.end() ? -1 : found - slots.begin();
}

int qor_array_has_num(const QorArray* array, double value) {
  return qor_array_indexof(array, value) >= 0 ? 1 : 0;
}

int qor_array_has_str(const QorArray* array, const char* value) {
  if (!qor::has_strings(array))
    return 0;
  const auto wanted = qor::bytes_of(value);
  return std::ranges::any_of(qor::slots_of(array), [wanted](double slot) {
    return qor::bytes_of(qor::reference_in<const char>(slot)) == wanted;
  });
}

QorArray* qor_array_flatten(const QorArray* array) {
  Flat flat;
  qor::with_room_for(array, nullptr, [&] { flatten_into(flat, array); });
  const bool is_all_strings = flat.has_strings && !flat.has_numbers;
  auto* result =
      qor::new_uninitialised_array(std::ssize(flat.slots), is_all_strings ? qor::string_flags : 0);
  std::ranges::copy(flat.slots, result->data);
  return result;
}
