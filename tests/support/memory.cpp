#include "tests/support/memory.h"

#include <cstdlib>
#include <new>

namespace kavo::test {

namespace {

struct Thread {
  bool is_counting = false;
  int64_t calls = 0;
  bool is_scarce = false;
  int64_t blocks_left = 0;
  bool has_run_out = false;
};

thread_local Thread thread;

void* take(size_t size) {
  thread.calls += thread.is_counting;
  if (thread.is_scarce && thread.blocks_left-- <= 0) {
    thread.has_run_out = true;
    return nullptr;
  }
  return std::malloc(size == 0 ? 1 : size);
}

void give_back(void* memory) {
  thread.calls += thread.is_counting && memory != nullptr;
  std::free(memory);
}

void* take_or_throw(size_t size) {
  void* memory = take(size);
  if (memory == nullptr)
    throw std::bad_alloc();
  return memory;
}

} // namespace

MemoryCount::MemoryCount() {
  thread.calls = 0;
  thread.is_counting = true;
}
MemoryCount::~MemoryCount() {
  thread.is_counting = false;
}
int64_t MemoryCount::calls() {
  return thread.calls;
}

ScarceMemory::ScarceMemory(int64_t blocks) {
  thread.is_scarce = true;
  thread.blocks_left = blocks;
  thread.has_run_out = false;
}
ScarceMemory::~ScarceMemory() {
  thread.is_scarce = false;
}
bool ScarceMemory::has_run_out() {
  return thread.has_run_out;
}

} // namespace kavo::test

void* operator new(size_t size) {
  return kavo::test::take_or_throw(size);
}
void* operator new[](size_t size) {
  return kavo::test::take_or_throw(size);
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return kavo::test::take(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
  return kavo::test::take(size);
}
void operator delete(void* memory) noexcept {
  kavo::test::give_back(memory);
}
void operator delete[](void* memory) noexcept {
  kavo::test::give_back(memory);
}
void operator delete(void* memory, size_t) noexcept {
  kavo::test::give_back(memory);
}
void operator delete[](void* memory, size_t) noexcept {
  kavo::test::give_back(memory);
}
