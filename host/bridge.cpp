// The thirteen operations that this library exports. No exception leaves them: what a command
// throws becomes the last error.
#pragma GCC visibility push(default)
#include "runtime/qorrt.h"
#pragma GCC visibility pop

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "host/binary_strings.h"
#include "host/catalogue.h"
#include "host/elements.h"
#include "host/host.h"

namespace {

using kavo::host::Arguments;
using kavo::host::Command;
using kavo::host::CommandError;
using kavo::host::Host;
using kavo::host::shown;

// The text of an error, in memory that is there before it is needed. What does not fit is cut.
class LastError {
public:
  void remember(std::string_view where, std::string_view what) {
    char* next = text_.data();
    for (const std::string_view part : {where, std::string_view(where.empty() ? "" : ": "), what}) {
      const auto room = static_cast<size_t>(text_.data() + text_.size() - 1 - next);
      next = std::copy_n(part.data(), std::min(part.size(), room), next);
    }
    *next = '\0';
    is_pending_ = true;
  }
  void forget() { is_pending_ = false; }

  const char* text() const { return is_pending_ ? text_.data() : nullptr; }

private:
  std::array<char, 4096> text_ = {};
  bool is_pending_ = false;
};

// The one running host. It lives on when the program exits without qorrt_shutdown, for by then the
// desktop's libraries may be gone.
struct Running {
  Host* host = nullptr;
  int64_t handle = 0; // of the host that runs or ran last
  LastError error;

  void stop() {
    delete host;
    host = nullptr;
  }
};

constinit Running running;

Host* host_of(int64_t handle) {
  return handle == running.handle ? running.host : nullptr;
}

// Does it, and remembers what it throws as an error of this name. False when it threw.
template<typename Action>
bool attempt(std::string_view name, Action action) {
  try {
    action();
    return true;
  } catch (const std::bad_alloc&) {
    running.error.remember(name, "out of memory");
  } catch (const std::exception& error) {
    running.error.remember(name, error.what());
  }
  return false;
}

const Command& command_of(const char* name) {
  const Command* command = name == nullptr ? nullptr : kavo::host::find_command(name);
  if (command == nullptr)
    throw CommandError("unknown command " + shown(std::string_view(name == nullptr ? "" : name)));
  return *command;
}

// Runs `action` on the command and its arguments; `Result()` and an error when it cannot.
template<typename Result, typename Action>
Result run(int64_t handle, const char* name, const void* slots, const uint32_t* tags, int64_t count,
           Action action) {
  const Command* command = nullptr;
  if (!attempt("", [&] { command = &command_of(name); }))
    return Result();
  Result result{};
  attempt(command->name, [&] {
    Host* host = host_of(handle);
    if (host == nullptr)
      throw CommandError("no host runs under the handle " + std::to_string(handle));
    kavo::host::check_arguments(*command, slots, tags, count);
    result = action(*command, *host, Arguments(static_cast<const qor_slot*>(slots), tags));
  });
  return result;
}

double run_for_number(const Command& command, Host& host, const Arguments& arguments) {
  if (command.run_sound != nullptr) {
    command.run_sound(*host.sound, arguments);
    return 0;
  }
  if (command.run_number == nullptr)
    throw CommandError("gives an array; call it with qorrt_call_typed_arr");
  return command.run_number(host, arguments);
}

QorArray* run_for_array(const Command& command, Host& host, const Arguments& arguments) {
  if (command.run_array == nullptr)
    throw CommandError("gives a number; call it with qorrt_call_typed_f64");
  return command.run_array(host, arguments);
}

} // namespace

int64_t qorrt_init(int argc, char** argv) {
  running.stop();
  running.error.forget();
  const bool runs = attempt("the host", [&] {
    running.host = new Host(kavo::host::make_platform());
    running.host->start(argc, argv);
  });
  if (runs)
    return ++running.handle;
  running.stop();
  return 0;
}

void qorrt_shutdown(int64_t handle) {
  if (host_of(handle) == nullptr)
    return;
  running.stop();
  running.error.forget();
}

void qorrt_set_event_dispatcher(int64_t handle, qorrt_dispatch_fn dispatch) {
  if (Host* host = host_of(handle))
    host->events.set_dispatcher(dispatch);
}

double qorrt_call_typed_f64(int64_t handle, const char* name, const void* slots,
                            const uint32_t* tags, int64_t n) {
  return run<double>(handle, name, slots, tags, n, run_for_number);
}

QorArray* qorrt_call_typed_arr(int64_t handle, const char* name, const void* slots,
                               const uint32_t* tags, int64_t n) {
  return run<QorArray*>(handle, name, slots, tags, n, run_for_array);
}

// One error for all handles, so that a call with a wrong handle is heard of, too.
const char* qorrt_last_error(int64_t) {
  const char* error = running.error.text();
  if (error != nullptr && running.host != nullptr)
    running.host->note_failure(error);
  return error;
}

void qorrt_clear_last_error(int64_t) {
  running.error.forget();
}

int64_t qorrt_frame_begin(int64_t handle) {
  Host* host = host_of(handle);
  return host == nullptr ? 0 : host->begin_frame();
}

void qorrt_frame_end(int64_t handle, int64_t token) {
  if (Host* host = host_of(handle))
    host->end_frame(token);
}

// A host value would be a number under which this library keeps something for the program. None
// of its commands hands one out, so that every value is unknown: 0 as a number, empty as a text.
double qorrt_val_to_f64(int64_t, int64_t) {
  return 0.0;
}

char* qorrt_val_to_str(int64_t, int64_t) {
  char* text = nullptr;
  attempt("a host value", [&] { text = kavo::host::new_text(""); });
  return text;
}

void qorrt_register_binary(const char* s, int64_t length) {
  attempt("a byte string", [&] { kavo::host::register_binary_string(s, length); });
}

int64_t qorrt_strlen(const char* s) {
  return kavo::host::binary_string_length(s);
}
