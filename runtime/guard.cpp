#include "runtime/guard.h"

#include "runtime/error.h"

namespace {

constexpr int64_t depth_limit = 256;
thread_local int64_t depth = 0;

} // namespace

int qor_recursion_enter() {
  if (depth >= depth_limit) {
    qor_err_set("Stack overflow: recursion too deep", 1);
    return 1;
  }
  depth += 1;
  return 0;
}

void qor_recursion_leave() {
  if (depth >= 1)
    depth -= 1;
}

int64_t qor_recursion_depth() {
  return depth;
}

void qor_recursion_reset_to(int64_t new_depth) {
  if (new_depth >= 0)
    depth = new_depth;
}
