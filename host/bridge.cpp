// The thirteen operations that this library exports. No exception leaves them: what a command
// throws becomes the last error.
#pragma GCC visibility push(default)
#include "runtime/qorrt.h"
#pragma GCC visibility pop

#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

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

// The one running host. Not destroyed when the program exits without qorrt_shutdown, for by then
// the desktop's libraries may be gone.
struct Running {
  std::unique_ptr<Host> host;
  int64_t handle = 0; // of the host that runs or ran last
  std::string last_error;
  bool has_failed = false;
};

Running& running() {
  static auto& running = *new Running;
  return running;
}

Host* host_of(int64_t handle) {
  Running& now = running();
  return handle == now.handle ? now.host.get() : nullptr;
}

void remember_error(std::string message) {
  running().last_error = std::move(message);
  running().has_failed = true;
}

// Runs `action` on the command and its arguments; `Result()` and an error when it cannot.
template<typename Result, typename Action>
Result run(int64_t handle, const char* name, const void* slots, const uint32_t* tags, int64_t count,
           Action action) {
  const Command* command = name == nullptr ? nullptr : kavo::host::find_command(name);
  if (command == nullptr) {
    remember_error("unknown command " + shown(std::string_view(name == nullptr ? "" : name)));
    return Result();
  }
  try {
    Host* host = host_of(handle);
    if (host == nullptr)
      throw CommandError("no host runs under the handle " + std::to_string(handle));
    kavo::host::check_arguments(*command, slots, tags, count);
    return action(*command, *host, Arguments(static_cast<const qor_slot*>(slots), tags));
  } catch (const std::bad_alloc&) {
    remember_error(std::string(command->name) + ": out of memory");
  } catch (const std::exception& error) {
    remember_error(std::string(command->name) + ": " + error.what());
  }
  return Result();
}

} // namespace

int64_t qorrt_init(int argc, char** argv) {
  Running& now = running();
  now.host.reset();
  now.has_failed = false;
  now.host = std::make_unique<Host>(kavo::host::make_platform());
  now.host->start_scores(argc, argv);
  return ++now.handle;
}

void qorrt_shutdown(int64_t handle) {
  if (host_of(handle) == nullptr)
    return;
  running().host.reset();
  running().has_failed = false;
}

void qorrt_set_event_dispatcher(int64_t handle, qorrt_dispatch_fn dispatch) {
  if (Host* host = host_of(handle))
    host->events.set_dispatcher(dispatch);
}

double qorrt_call_typed_f64(int64_t handle, const char* name, const void* slots,
                            const uint32_t* tags, int64_t n) {
  return run<double>(handle, name, slots, tags, n,
                     [](const Command& command, Host& host, const Arguments& arguments) {
                       if (command.run_number == nullptr)
                         throw CommandError("gives an array; call it with qorrt_call_typed_arr");
                       return command.run_number(host, arguments);
                     });
}

QorArray* qorrt_call_typed_arr(int64_t handle, const char* name, const void* slots,
                               const uint32_t* tags, int64_t n) {
  return run<QorArray*>(handle, name, slots, tags, n,
                        [](const Command& command, Host& host, const Arguments& arguments) {
                          if (command.run_array == nullptr)
                            throw CommandError("gives a number; call it with qorrt_call_typed_f64");
                          return command.run_array(host, arguments);
                        });
}

// One error for all handles, so that a call with a wrong handle is heard of, too.
const char* qorrt_last_error(int64_t) {
  const Running& now = running();
  if (!now.has_failed)
    return nullptr;
  if (now.host != nullptr)
    now.host->note_failure(now.last_error);
  return now.last_error.c_str();
}

void qorrt_clear_last_error(int64_t) {
  running().has_failed = false;
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
  return kavo::host::new_text("");
}

void qorrt_register_binary(const char* s, int64_t length) {
  kavo::host::register_binary_string(s, length);
}

int64_t qorrt_strlen(const char* s) {
  return kavo::host::binary_string_length(s);
}
