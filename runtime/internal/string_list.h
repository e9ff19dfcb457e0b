// A string array under construction.
#pragma once

#include <string_view>

#include "runtime/internal/array_slots.h"
#include "runtime/internal/memory.h"
#include "runtime/internal/strings.h"

namespace qor {

// Grows by doubling; release() ends it and hands the array to the caller.
class StringList {
public:
  void add(std::string_view piece) {
    if (count_ == capacity_)
      grow();
    set_string(array_, count_++, new_string(piece));
  }

  QorArray* release() {
    array_->length = count_;
    return array_;
  }

private:
  void grow() {
    capacity_ *= 2;
    array_->data = static_cast<double*>(
        reallocate(array_->data, static_cast<size_t>(capacity_) * sizeof(double)));
  }

  int64_t count_ = 0;
  int64_t capacity_ = 16;
  QorArray* array_ = new_uninitialised_array(capacity_, string_flags);
};

} // namespace qor
