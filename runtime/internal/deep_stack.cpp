#include "runtime/internal/deep_stack.h"

#include <pthread.h>

namespace qor {
namespace {

// Any thread of a desktop has this much left.
constexpr size_t always_there = 1 << 20;

void* run(void* work) {
  (*static_cast<const std::function<void()>*>(work))();
  return nullptr;
}

bool run_in_thread(const pthread_attr_t& attributes, const std::function<void()>& work) {
  pthread_t thread{};
  auto* argument = const_cast<std::function<void()>*>(&work);
  return pthread_create(&thread, &attributes, run, argument) == 0 &&
         pthread_join(thread, nullptr) == 0;
}

} // namespace

bool run_with_stack(size_t bytes, const std::function<void()>& work) {
  if (bytes <= always_there) {
    work();
    return true;
  }
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0)
    return false;
  const bool has_run =
      pthread_attr_setstacksize(&attributes, bytes) == 0 && run_in_thread(attributes, work);
  pthread_attr_destroy(&attributes);
  return has_run;
}

} // namespace qor
