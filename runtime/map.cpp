#include "runtime/map.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <span>
#include <string_view>

#include "runtime/internal/memory.h"
#include "runtime/internal/numbers_to_text.h"
#include "runtime/internal/strings.h"
#include "runtime/text.h"

namespace {

constexpr int64_t first_capacity = 8;
constexpr int64_t absent = -1;

// Maps of more than a few keys find them by their hashes: behind the keys, in the same block, stand
// twice as many places as there is capacity. Each is free or an entry's, which has the first free
// one from its hash on, with a part of the hash that spares most comparisons.
struct Place {
  uint32_t hash;
  uint32_t entry_after; // 0 when the place is free
};

constexpr int64_t places_per_entry = 2;

bool has_places(const QorMap& map) {
  return map.capacity > first_capacity;
}

class Places {
public:
  explicit Places(const QorMap& map)
      : places_(reinterpret_cast<Place*>(map.keys + map.capacity)),
        mask_(static_cast<size_t>(map.capacity * places_per_entry) - 1) {}

  // The place from `hash` on, round and round, where `is_wanted` holds, or the free one before.
  template<typename IsWanted>
  Place& find(size_t hash, IsWanted is_wanted) const {
    size_t at = hash & mask_;
    while (places_[at].entry_after != 0 && !is_wanted(places_[at]))
      at = (at + 1) & mask_;
    return places_[at];
  }

  void clear() const { std::fill_n(places_, mask_ + 1, Place{}); }

private:
  Place* places_;
  size_t mask_;
};

size_t hash_of(const char* key) {
  return std::hash<std::string_view>()(key);
}

// The half of a hash that does not choose the place in maps of ordinary size.
uint32_t upper_half(size_t hash) {
  return static_cast<uint32_t>(hash >> (sizeof hash * 4));
}

void take_place(const QorMap& map, int64_t index) {
  const auto hash = hash_of(map.keys[index]);
  Places(map).find(hash, [](const Place& /*taken*/) { return false; }) = {
      .hash = upper_half(hash), .entry_after = static_cast<uint32_t>(index + 1)};
}

int64_t index_by_place(const QorMap& map, const char* key) {
  const auto hash = hash_of(key);
  const auto& place = Places(map).find(hash, [&](const Place& taken) {
    return taken.hash == upper_half(hash) && std::strcmp(key, map.keys[taken.entry_after - 1]) == 0;
  });
  return int64_t{place.entry_after} - 1;
}

int64_t index_of(const QorMap* map, const char* key) {
  if (map == nullptr || key == nullptr)
    return absent;
  if (has_places(*map))
    return index_by_place(*map, key);
  const auto is_key = [key](const char* other) { return std::strcmp(key, other) == 0; };
  const std::span<char* const> keys(map->keys, static_cast<size_t>(map->count));
  const auto found = std::ranges::find_if(keys, is_key);
  return found == keys.end() ? absent : found - keys.begin();
}

template<typename T>
void resize(T*& block, int64_t count, size_t more = 0) {
  block = static_cast<T*>(qor::reallocate(block, static_cast<size_t>(count) * sizeof(T) + more));
}

void grow(QorMap& map) {
  map.capacity = map.capacity == 0 ? first_capacity : map.capacity * 2;
  const auto places = has_places(map) ? static_cast<size_t>(map.capacity * places_per_entry) : 0;
  resize(map.keys, map.capacity, places * sizeof(Place));
  resize(map.values, map.capacity);
  resize(map.tags, map.capacity);
  if (places == 0)
    return;
  Places(map).clear();
  for (int64_t i = 0; i < map.count; ++i)
    take_place(map, i);
}

int64_t append_key(QorMap& map, const char* key) {
  if (map.count == map.capacity)
    grow(map);
  map.keys[map.count] = qor::new_string(key);
  map.tags[map.count] = QOR_TAG_INT64;
  if (has_places(map))
    take_place(map, map.count);
  return map.count++;
}

void free_value(QorMap& map, int64_t index) {
  if (map.tags[index] == QOR_TAG_STRING)
    qor_str_free(const_cast<char*>(map.values[index].str));
}

// Takes over `value`, which is an owned string when the tag says so.
void store(QorMap& map, const char* key, uint32_t tag, qor_slot value) {
  auto index = index_of(&map, key);
  if (index == absent)
    index = append_key(map, key);
  else
    free_value(map, index);
  map.values[index] = value;
  map.tags[index] = tag;
}

bool is_reference(uint32_t tag) {
  return tag == QOR_TAG_ARRAY || tag == QOR_TAG_OBJECT || tag == QOR_TAG_HOST;
}

bool is_number(uint32_t tag) {
  return tag == QOR_TAG_INT64 || tag == QOR_TAG_FLOAT64;
}

double number_at(const QorMap& map, int64_t index) {
  switch (map.tags[index]) {
  case QOR_TAG_INT64:
    return static_cast<double>(map.values[index].i64);
  case QOR_TAG_FLOAT64:
    return map.values[index].f64;
  default:
    return 0.0;
  }
}

} // namespace

QorMap* qor_map_new() {
  return static_cast<QorMap*>(qor::allocate_zeroed(1, sizeof(QorMap)));
}

void qor_map_free(QorMap* map) {
  if (map == nullptr)
    return;
  for (int64_t i = 0; i < map->count; ++i) {
    free_value(*map, i);
    std::free(map->keys[i]);
  }
  std::free(map->keys);
  std::free(map->values);
  std::free(map->tags);
  std::free(map);
}

void qor_map_set_f64(QorMap* map, const char* key, double value) {
  if (map != nullptr && key != nullptr)
    store(*map, key, QOR_TAG_FLOAT64, {.f64 = value});
}

void qor_map_set_str(QorMap* map, const char* key, const char* value) {
  if (map != nullptr && key != nullptr)
    store(*map, key, QOR_TAG_STRING, qor_slot_of(qor_str_str(value)));
}

void qor_map_set_tagged(QorMap* map, const char* key, uint32_t tag, qor_slot value) {
  if (tag == QOR_TAG_STRING)
    qor_map_set_str(map, key, value.str);
  else if (map != nullptr && key != nullptr)
    store(*map, key, tag, value);
}

double qor_map_get_f64(const QorMap* map, const char* key) {
  const auto index = index_of(map, key);
  return index == absent ? 0.0 : number_at(*map, index);
}

char* qor_map_get_str(const QorMap* map, const char* key) {
  const auto index = index_of(map, key);
  if (index == absent)
    return qor::new_string("");
  if (map->tags[index] == QOR_TAG_STRING)
    return qor_str_str(map->values[index].str);
  qor::NumberBuffer buffer;
  return qor::new_string(is_number(map->tags[index])
                             ? qor::write_general(buffer, number_at(*map, index))
                             : std::string_view());
}

void* qor_map_get_obj(const QorMap* map, const char* key) {
  const auto index = index_of(map, key);
  return index == absent ? nullptr : qor_reference_in(map->values[index]);
}

uint32_t qor_map_get_tagged(const QorMap* map, const char* key, qor_slot* value) {
  qor_slot ignored{};
  auto& out = value == nullptr ? ignored : *value;
  out = {};
  const auto index = index_of(map, key);
  if (index == absent)
    return 0;
  out = map->values[index];
  const auto tag = map->tags[index];
  if (is_reference(tag))
    return tag;
  if (tag == QOR_TAG_STRING && value != nullptr)
    out = qor_slot_of(qor_str_str(out.str));
  if (tag == QOR_TAG_INT64)
    out.f64 = number_at(*map, index);
  return tag == QOR_TAG_STRING ? QOR_TAG_STRING : QOR_TAG_FLOAT64;
}

int qor_map_has(const QorMap* map, const char* key) {
  return index_of(map, key) == absent ? 0 : 1;
}
