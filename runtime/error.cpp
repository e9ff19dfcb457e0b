#include "runtime/error.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "runtime/internal/strings.h"

namespace {

constexpr size_t message_size = 512;

struct Error {
  std::array<char, message_size> message{};
  int64_t code = 0;

  void set(const char* text, int64_t new_code) {
    std::strncpy(message.data(), text == nullptr ? "" : text, message_size - 1);
    message.back() = '\0';
    code = new_code;
  }
};

Error pending;
Error last;

} // namespace

void qor_err_set(const char* message, int64_t code) {
  pending.set(message, code);
  last.set(message, code);
}

void qor_err_clear() {
  pending = {};
  last = {};
}

int64_t qor_err_code() {
  return pending.code;
}

int64_t qor_err_code_visible() {
  return pending.code != 0 ? pending.code : last.code;
}

void qor_err_code_clear() {
  pending.code = 0;
}

char* qor_err_msg() {
  const auto& message = pending.message.front() != '\0' ? pending.message : last.message;
  return qor::new_string(message.data());
}

void qor_throw_uncaught() {
  std::fprintf(stderr, "Unhandled exception: %s\n", pending.message.data());
  std::fflush(stderr);
  std::exit(EXIT_FAILURE);
}
