#include "runtime/internal/memory.h"

#include <cstdio>

namespace qor {
namespace {

void* require(void* block) {
  if (block == nullptr)
    end_for_want_of_memory();
  return block;
}

} // namespace

void end_for_want_of_memory() {
  std::fputs("Out of memory\n", stderr);
  std::abort();
}

// reallocarray checks the product; a block from nothing is a new one.
void* allocate_many(size_t count, size_t size) {
  return require(reallocarray(nullptr, count == 0 ? 1 : count, size));
}

void* allocate_zeroed(size_t count, size_t size) {
  return require(std::calloc(count == 0 ? 1 : count, size));
}

void* reallocate(void* block, size_t bytes) {
  return require(std::realloc(block, bytes == 0 ? 1 : bytes));
}

} // namespace qor
