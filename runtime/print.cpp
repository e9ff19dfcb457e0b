#include "runtime/print.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

#include "runtime/internal/numbers_to_text.h"

void qor_print_str(const char* text) {
  if (text != nullptr)
    std::fputs(text, stdout);
}

void qor_print_int(int64_t value) {
  std::printf("%" PRId64, value);
}

void qor_format_double(char* destination, double value) {
  qor::NumberBuffer buffer;
  const auto text = qor::write_trimmed(buffer, value);
  *std::copy(text.begin(), text.end(), destination) = '\0';
}

void qor_print_double(double value) {
  qor::NumberBuffer buffer;
  const auto text = qor::write_trimmed(buffer, value);
  std::fwrite(text.data(), 1, text.size(), stdout);
}

void qor_print_bool(int64_t value) {
  std::fputs(value != 0 ? "TRUE" : "FALSE", stdout);
}

void qor_print_space() {
  std::fputc(' ', stdout);
}

void qor_print_nl() {
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

void qor_trace(const char* file, int64_t line) {
  if (file != nullptr && *file != '\0')
    std::fprintf(stderr, "[TRACE] %s:%" PRId64 "\n", file, line);
  else
    std::fprintf(stderr, "[TRACE] line %" PRId64 "\n", line);
  std::fflush(stderr);
}
