#include "runtime/internal/nesting.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <unordered_map>

#include "runtime/internal/array_slots.h"
#include "runtime/internal/containers.h"

namespace qor {
namespace {

// Every thread has stack for so many levels.
constexpr int shallow = 32;

// More than any of the recursions takes for one level.
#if defined(__OPTIMIZE__) && !defined(__SANITIZE_ADDRESS__)
constexpr size_t stack_per_level = 1024;
#else
constexpr size_t stack_per_level = 4096;
#endif

bool may_have_rows(const QorArray* array) {
  return array != nullptr && (has_rows(array) || is_tagged(array));
}

bool is_shallow(const QorArray* array, int levels) {
  if (!may_have_rows(array))
    return true;
  for (int64_t i = 0; i < array->length; ++i)
    if (const auto* row = row_of(array, i); row != nullptr)
      if (levels == 0 || !is_shallow(row, levels - 1))
        return false;
  return true;
}

// Finds the height of an array, each row looked at once however many arrays share it.
class Heights {
public:
  // None for an array that holds itself.
  std::optional<size_t> height_of(const QorArray* array) {
    enter(array);
    while (!path_.empty()) {
      const auto* row = next_row();
      if (row == nullptr)
        leave();
      else if (const auto found = heights_.find(row); found == heights_.end())
        enter(row);
      else if (found->second == on_path)
        return {};
      else
        note(found->second);
    }
    return heights_[array];
  }

private:
  static constexpr size_t on_path = 0;

  struct Visit {
    const QorArray* array;
    int64_t next;
    size_t below;
  };

  void enter(const QorArray* array) {
    heights_[array] = on_path;
    path_.push_back({array, 0, 0});
  }

  const QorArray* next_row() {
    auto& visit = path_.back();
    const QorArray* row = nullptr;
    while (row == nullptr && visit.next < visit.array->length)
      row = row_of(visit.array, visit.next++);
    return row;
  }

  void leave() {
    const auto height = path_.back().below + 1;
    heights_[path_.back().array] = height;
    path_.pop_back();
    note(height);
  }

  void note(size_t height) {
    if (!path_.empty())
      path_.back().below = std::max(path_.back().below, height);
  }

  Vector<Visit> path_;
  std::unordered_map<const QorArray*, size_t, std::hash<const QorArray*>, std::equal_to<>,
                     Allocator<std::pair<const QorArray* const, size_t>>>
      heights_;
};

} // namespace

Room room_for(const QorArray* a, const QorArray* b) {
  size_t levels = 0;
  for (const auto* array : {a, b}) {
    if (is_shallow(array, shallow))
      continue;
    const auto height = Heights().height_of(array);
    if (!height)
      return {.is_endless = true, .bytes = 0};
    levels = std::max(levels, *height);
  }
  return {.is_endless = false, .bytes = levels * stack_per_level};
}

} // namespace qor
