#include "tests/host/sound/forbidden_calls.h"

#include <pthread.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdio>

namespace {

struct Counts {
  bool is_counting = false;
  int memory = 0;
  int locks = 0;
  int files = 0;
};

thread_local Counts counts;

void count(int Counts::*kind) {
  counts.*kind += counts.is_counting;
}

} // namespace

// The names are the linker's: __real_x is what x was, __wrap_x is called in its place.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" {

void* __real_malloc(size_t size);
void* __real_calloc(size_t number, size_t size);
void* __real_realloc(void* block, size_t size);
void __real_free(void* block);
void* __real__Znwm(size_t size);
void* __real__Znam(size_t size);
void __real__ZdlPv(void* block);
void __real__ZdlPvm(void* block, size_t size);
int __real_pthread_mutex_lock(pthread_mutex_t* mutex);
int __real___cxa_guard_acquire(void* guard);
ssize_t __real_write(int file, const void* bytes, size_t count);
size_t __real_fwrite(const void* bytes, size_t size, size_t number, FILE* file);
int __real_fputs(const char* text, FILE* file);

void* __wrap_malloc(size_t size) {
  count(&Counts::memory);
  return __real_malloc(size);
}
void* __wrap_calloc(size_t number, size_t size) {
  count(&Counts::memory);
  return __real_calloc(number, size);
}
void* __wrap_realloc(void* block, size_t size) {
  count(&Counts::memory);
  return __real_realloc(block, size);
}
void __wrap_free(void* block) {
  count(&Counts::memory);
  __real_free(block);
}
void* __wrap__Znwm(size_t size) {
  count(&Counts::memory);
  return __real__Znwm(size);
}
void* __wrap__Znam(size_t size) {
  count(&Counts::memory);
  return __real__Znam(size);
}
void __wrap__ZdlPv(void* block) {
  count(&Counts::memory);
  __real__ZdlPv(block);
}
void __wrap__ZdlPvm(void* block, size_t size) {
  count(&Counts::memory);
  __real__ZdlPvm(block, size);
}
int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex) {
  count(&Counts::locks);
  return __real_pthread_mutex_lock(mutex);
}
int __wrap___cxa_guard_acquire(void* guard) {
  count(&Counts::locks);
  return __real___cxa_guard_acquire(guard);
}
ssize_t __wrap_write(int file, const void* bytes, size_t length) {
  count(&Counts::files);
  return __real_write(file, bytes, length);
}
size_t __wrap_fwrite(const void* bytes, size_t size, size_t number, FILE* file) {
  count(&Counts::files);
  return __real_fwrite(bytes, size, number, file);
}
int __wrap_fputs(const char* text, FILE* file) {
  count(&Counts::files);
  return __real_fputs(text, file);
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

namespace kavo::sound {

ForbiddenCalls::ForbiddenCalls() {
  counts = Counts{};
  counts.is_counting = true;
}
ForbiddenCalls::~ForbiddenCalls() {
  counts.is_counting = false;
}

int ForbiddenCalls::memory() {
  return counts.memory;
}
int ForbiddenCalls::locks() {
  return counts.locks;
}
int ForbiddenCalls::files() {
  return counts.files;
}

} // namespace kavo::sound
