// A running host, called the way a program calls it.
#pragma once

#include <cstdlib>
#include <string>
#include <type_traits>
#include <vector>

#include "runtime/qorrt.h"

namespace kavo::test {

// Slots and tags in the order of the arguments.
class CommandArguments {
public:
  template<typename... Values>
  explicit CommandArguments(const Values&... values) {
    (add(values), ...);
  }

  const void* slots() const { return slots_.empty() ? nullptr : slots_.data(); }
  const uint32_t* tags() const { return tags_.empty() ? nullptr : tags_.data(); }
  int64_t count() const { return static_cast<int64_t>(slots_.size()); }

private:
  void add(double value) {
    qor_slot slot = {};
    slot.f64 = value;
    put(slot, QOR_TAG_FLOAT64);
  }
  void add(int value) {
    qor_slot slot = {};
    slot.i64 = value;
    put(slot, QOR_TAG_INT64);
  }
  void add(const char* value) {
    qor_slot slot = {};
    slot.str = value;
    put(slot, QOR_TAG_STRING);
  }
  void add(const std::string& value) { add(value.c_str()); }
  void add(const QorArray* value) {
    qor_slot slot = {};
    slot.arr = const_cast<QorArray*>(value);
    put(slot, QOR_TAG_ARRAY);
  }
  void put(const qor_slot& slot, uint32_t tag) {
    slots_.push_back(slot);
    tags_.push_back(tag);
  }

  std::vector<qor_slot> slots_;
  std::vector<uint32_t> tags_;
};

class Bridge {
public:
  Bridge() : handle_(qorrt_init(0, nullptr)) {}
  ~Bridge() { qorrt_shutdown(handle_); }
  Bridge(const Bridge&) = delete;
  Bridge& operator=(const Bridge&) = delete;

  int64_t handle() const { return handle_; }

  template<typename... Values>
  double send(const char* name, const Values&... values) {
    const CommandArguments arguments(values...);
    return qorrt_call_typed_f64(handle_, name, arguments.slots(), arguments.tags(),
                                arguments.count());
  }

  // The result belongs to the caller.
  template<typename... Values>
  QorArray* fetch(const char* name, const Values&... values) {
    const CommandArguments arguments(values...);
    return qorrt_call_typed_arr(handle_, name, arguments.slots(), arguments.tags(),
                                arguments.count());
  }

  // The error that is pending, empty when none is; clears it.
  std::string take_error() const {
    const char* error = qorrt_last_error(handle_);
    std::string text = error == nullptr ? "" : error;
    qorrt_clear_last_error(handle_);
    return text;
  }

  // The error of one command that gives a number.
  template<typename... Values>
  std::string error_of(const char* name, const Values&... values) {
    send(name, values...);
    return take_error();
  }

  template<typename... Values>
  std::string error_of_fetch(const char* name, const Values&... values) {
    if (fetch(name, values...) != nullptr)
      return "(no error)";
    return take_error();
  }

private:
  int64_t handle_;
};

// Sets an environment variable, or unsets it for null, until the end of the scope.
class Environment {
public:
  Environment(const char* name, const char* value) : name_(name) {
    const char* before = std::getenv(name);
    was_set_ = before != nullptr;
    before_ = was_set_ ? before : "";
    set(value);
  }
  ~Environment() { set(was_set_ ? before_.c_str() : nullptr); }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

private:
  void set(const char* value) {
    if (value == nullptr)
      unsetenv(name_);
    else
      setenv(name_, value, 1);
  }

  const char* name_;
  bool was_set_;
  std::string before_;
};

} // namespace kavo::test
