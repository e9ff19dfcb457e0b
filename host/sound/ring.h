// A queue between two threads, one that pushes and one that pops, without a lock.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <type_traits>

namespace kavo::sound {

// Holds up to `capacity` (a power of two) plain values. Each end owns its index and publishes it
// with release order; the other end reads it with acquire order.
template<typename T, size_t capacity>
class Ring {
  static_assert((capacity & (capacity - 1)) == 0);
  static_assert(std::is_trivially_copyable_v<T>);

public:
  // False, and nothing pushed, when it is full.
  bool push(const T& value) {
    const size_t end = end_.load(std::memory_order_relaxed);
    if (end - begin_.load(std::memory_order_acquire) == capacity)
      return false;
    values_[end % capacity] = value;
    end_.store(end + 1, std::memory_order_release);
    return true;
  }

  // False, and `value` as it was, when it is empty.
  bool pop(T& value) {
    const size_t begin = begin_.load(std::memory_order_relaxed);
    if (begin == end_.load(std::memory_order_acquire))
      return false;
    value = values_[begin % capacity];
    begin_.store(begin + 1, std::memory_order_release);
    return true;
  }

private:
  // On cache lines of their own, so that the two threads do not slow each other down.
  alignas(64) std::atomic<size_t> begin_ = 0;
  alignas(64) std::atomic<size_t> end_ = 0;
  alignas(64) std::array<T, capacity> values_{};
};

} // namespace kavo::sound
