#include "runtime/bridge.h"

#include "runtime/internal/array_slots.h"
#include "runtime/internal/strings.h"

namespace {

int argument_count = 0;
char** arguments = nullptr;
int64_t runtime_handle = 0;

} // namespace

void qor_set_args(int argc, char** argv) {
  argument_count = argv == nullptr ? 0 : argc;
  arguments = argv;
}

QorArray* qor_os_args() {
  auto* list = qor::new_string_array(argument_count);
  for (int64_t i = 0; i < list->length; ++i)
    qor::set_string(list, i, qor::new_string(qor::text_of(arguments[i])));
  return list;
}

void qor_runtime_set_handle(int64_t handle) {
  runtime_handle = handle;
}

int64_t qor_runtime_handle() {
  return runtime_handle;
}
