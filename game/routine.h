// The call convention of every game routine, in three pieces.
//
//   ENTER()         first line of a routine: enters the recursion guard, leaves it on every path
//   DO(statement)   the statement, then the poll; returns while an error is pending
//   TRY(expression) the value of the expression, after the same poll
//
// A poll moves a failed host command's message into the error state. Routines return Out<T>,
// which only DO and TRY open, so a forgotten poll does not compile. One TRY per full expression,
// && and || excepted: leaving the function from within a larger one skips destructors in GCC 12.
#pragma once

#include <utility>

#include "runtime/qor.h"

namespace kavo {

// What a routine gives back: a T, or its zero value when the routine was cut short.
template<typename T = void>
class [[nodiscard]] Out {
public:
  Out() = default;
  Out(T value) : value_(std::move(value)) {}

private:
  friend struct Opener;
  T value_{};
};

template<>
class [[nodiscard]] Out<void> {};

// Opens what DO and TRY were given: a routine's result, or any other value as it is.
struct Opener {
  template<typename T>
  static T open(Out<T>& out) {
    return std::move(out.value_);
  }
  template<typename T>
  static T open(T& value) {
    return std::move(value);
  }
};

// Holds the recursion guard for as long as a routine runs.
class Routine {
public:
  Routine() : is_refused_(qor_recursion_enter() != 0) {}
  // A refused entry lowers the depth too: that is the convention.
  ~Routine() { qor_recursion_leave(); }
  Routine(const Routine&) = delete;
  Routine& operator=(const Routine&) = delete;

  [[nodiscard]] bool is_refused() const { return is_refused_; }

private:
  bool is_refused_;
};

// Polls the host; true while an error is pending.
inline bool error_is_pending() {
  const auto handle = qor_runtime_handle();
  if (const char* message = qorrt_last_error(handle)) {
    qor_err_set(message, 1);
    qorrt_clear_last_error(handle);
  }
  return qor_err_code() != 0;
}

} // namespace kavo

// NOLINTBEGIN(cppcoreguidelines-macro-usage): a function cannot return from its caller
#define ENTER()                                                                                    \
  const ::kavo::Routine routine_;                                                                  \
  if (routine_.is_refused())                                                                       \
    return {}

#define DO(...)                                                                                    \
  do {                                                                                             \
    static_cast<void>(__VA_ARGS__);                                                                \
    if (::kavo::error_is_pending())                                                                \
      return {};                                                                                   \
  } while (false)

#define TRY(...)                                                                                   \
  __extension__({                                                                                  \
    auto try_result_ = __VA_ARGS__;                                                                \
    if (::kavo::error_is_pending())                                                                \
      return {};                                                                                   \
    ::kavo::Opener::open(try_result_);                                                             \
  })
// NOLINTEND(cppcoreguidelines-macro-usage)
