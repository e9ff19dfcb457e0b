#include "runtime/internal/deep_stack.h"

#include <pthread.h>

namespace qor {
namespace {

// Any thread of a desktop has this much left.
constexpr size_t always_there = 1 << 20;

struct Task {
  void (*work)(void*);
  void* argument;
};

void* run(void* task) {
  const auto* todo = static_cast<const Task*>(task);
  todo->work(todo->argument);
  return nullptr;
}

bool run_in_thread(const pthread_attr_t& attributes, Task task) {
  pthread_t thread{};
  return pthread_create(&thread, &attributes, run, &task) == 0 &&
         pthread_join(thread, nullptr) == 0;
}

} // namespace

bool run_with_stack(size_t bytes, void (*work)(void*), void* argument) {
  if (bytes <= always_there) {
    work(argument);
    return true;
  }
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0)
    return false;
  const bool has_run = pthread_attr_setstacksize(&attributes, bytes) == 0 &&
                       run_in_thread(attributes, {work, argument});
  pthread_attr_destroy(&attributes);
  return has_run;
}

} // namespace qor
