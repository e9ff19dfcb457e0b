#include "bench/allocations.h"

#include <atomic>
#include <cstddef>

namespace {

std::atomic<int64_t> made = 0;
std::atomic<int64_t> freed = 0;

void* count(void* memory) {
  if (memory != nullptr)
    made.fetch_add(1, std::memory_order_relaxed);
  return memory;
}

} // namespace

kavo::bench::Allocations kavo::bench::allocations() {
  return {made, made - freed};
}

// These stand before the C library's own, under whose other names the real ones are reached.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-inconsistent-declaration-parameter-name):
// the C library's names
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* memory, size_t size);
void __libc_free(void* memory);

void* malloc(size_t size) {
  return count(__libc_malloc(size));
}

void* calloc(size_t elements, size_t size) {
  return count(__libc_calloc(elements, size));
}

// Growing a block counts as a new one in place of the old.
void* realloc(void* memory, size_t size) {
  if (memory != nullptr)
    freed.fetch_add(1, std::memory_order_relaxed);
  return count(__libc_realloc(memory, size));
}

void free(void* memory) {
  if (memory != nullptr)
    freed.fetch_add(1, std::memory_order_relaxed);
  __libc_free(memory);
}
}
// NOLINTEND(bugprone-reserved-identifier,readability-inconsistent-declaration-parameter-name)
