// A fuzzer's bytes, taken apart piece by piece, and a check that stops it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "runtime/array.h"
#include "runtime/text.h"

namespace kavo::fuzz {

class Input {
public:
  Input(const uint8_t* data, size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

  // The bytes up to the next NUL, at most `longest`.
  std::string text(size_t longest = 4096) {
    const auto end = std::min(rest_.find('\0'), rest_.size());
    std::string piece(rest_.substr(0, std::min(end, longest)));
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return piece;
  }

  // The next bytes, as many as there are.
  std::string bytes(size_t count) {
    std::string piece(rest_.substr(0, count));
    rest_.remove_prefix(piece.size());
    return piece;
  }

  // A value of any bits; zeros when the input ends early.
  template<typename T>
  T value() {
    T result{};
    const auto size = std::min(sizeof result, rest_.size());
    if (size > 0)
      std::memcpy(&result, rest_.data(), size);
    rest_.remove_prefix(size);
    return result;
  }

  std::string_view rest() const { return rest_; }

private:
  std::string_view rest_;
};

struct Free {
  void operator()(char* s) const { qor_str_free(s); }
  void operator()(QorArray* array) const { qor_array_free_deep(array); }
};
using Text = std::unique_ptr<char, Free>;
using Array = std::unique_ptr<QorArray, Free>;

inline void require(bool holds, const char* what) {
  if (holds)
    return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

} // namespace kavo::fuzz
