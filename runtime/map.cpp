#include "runtime/map.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <span>

#include "runtime/internal/memory.h"
#include "runtime/internal/numbers_to_text.h"
#include "runtime/internal/strings.h"
#include "runtime/text.h"

namespace {

constexpr int64_t first_capacity = 8;
constexpr int64_t absent = -1;

int64_t index_of(const QorMap* map, const char* key) {
  if (map == nullptr || key == nullptr)
    return absent;
  const auto is_key = [key](const char* other) { return std::strcmp(key, other) == 0; };
  const std::span<char* const> keys(map->keys, static_cast<size_t>(map->count));
  const auto found = std::ranges::find_if(keys, is_key);
  return found == keys.end() ? absent : found - keys.begin();
}

template<typename T>
void resize(T*& block, int64_t count) {
  block = static_cast<T*>(qor::reallocate(block, static_cast<size_t>(count) * sizeof(T)));
}

void grow(QorMap& map) {
  map.capacity = map.capacity == 0 ? first_capacity : map.capacity * 2;
  resize(map.keys, map.capacity);
  resize(map.values, map.capacity);
  resize(map.tags, map.capacity);
}

int64_t append_key(QorMap& map, const char* key) {
  if (map.count == map.capacity)
    grow(map);
  map.keys[map.count] = qor::new_string(key);
  map.tags[map.count] = QOR_TAG_INT64;
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
  return index == absent || is_number(map->tags[index]) ? nullptr
                                                        : qor_reference_in(map->values[index]);
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
