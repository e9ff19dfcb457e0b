// The host of a program that brings none: it keeps the lengths of byte strings, which is all that
// the runtime asks of it, and refuses every command.
//
// All operations are in this one source: a program that links a host and the stand-in by mistake
// gets either as a whole, and finds out by its first command or by its linker. Nothing of the
// runtime is called, so that it can stand behind it on the linker's line.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <unordered_map>

#include "runtime/qorrt.h"

namespace {

using Lengths = std::unordered_map<const char*, int64_t>;

// Made with the first byte string and never destroyed: static strings of the program's own may
// still be forgotten while it exits.
Lengths* lengths = nullptr;

bool has_refused = false;

// As the runtime ends.
[[noreturn]] void end_for_want_of_memory() {
  static_cast<void>(std::fputs("Out of memory\n", stderr));
  std::abort();
}

void set_length(const char* s, int64_t length) {
  try {
    if (lengths == nullptr)
      lengths = new Lengths;
    lengths->insert_or_assign(s, length);
  } catch (const std::bad_alloc&) {
    end_for_want_of_memory();
  }
}

} // namespace

int64_t qorrt_init(int /*argc*/, char** /*argv*/) {
  return 1;
}

void qorrt_shutdown(int64_t /*handle*/) {}

void qorrt_set_event_dispatcher(int64_t /*handle*/, qorrt_dispatch_fn /*dispatch*/) {}

double qorrt_call_typed_f64(int64_t /*handle*/, const char* /*name*/, const void* /*slots*/,
                            const uint32_t* /*tags*/, int64_t /*n*/) {
  has_refused = true;
  return 0.0;
}

QorArray* qorrt_call_typed_arr(int64_t /*handle*/, const char* /*name*/, const void* /*slots*/,
                               const uint32_t* /*tags*/, int64_t /*n*/) {
  has_refused = true;
  return nullptr;
}

const char* qorrt_last_error(int64_t /*handle*/) {
  return has_refused ? "there is no host: the program is linked with the one that stands in"
                     : nullptr;
}

void qorrt_clear_last_error(int64_t /*handle*/) {
  has_refused = false;
}

int64_t qorrt_frame_begin(int64_t /*handle*/) {
  return 1;
}

void qorrt_frame_end(int64_t /*handle*/, int64_t /*token*/) {}

double qorrt_val_to_f64(int64_t /*handle*/, int64_t /*value*/) {
  return 0.0;
}

char* qorrt_val_to_str(int64_t /*handle*/, int64_t /*value*/) {
  char* const text = strdup("");
  if (text == nullptr)
    end_for_want_of_memory();
  return text;
}

void qorrt_register_binary(const char* s, int64_t length) {
  if (s == nullptr)
    return;
  if (length >= 0)
    set_length(s, length);
  else if (lengths != nullptr)
    lengths->erase(s);
}

int64_t qorrt_strlen(const char* s) {
  if (lengths == nullptr)
    return -1;
  const auto found = lengths->find(s);
  return found == lengths->end() ? -1 : found->second;
}
