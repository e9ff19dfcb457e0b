// How often a test that tries many inputs goes round: a share of it where each round is slow.
#pragma once

#include <algorithm>
#include <cstdlib>

namespace kavo::test {

// All of them, or one of KAVO_TEST_SHARE, a whole number in the environment; at least one.
inline int rounds(int all) {
  const char* share = std::getenv("KAVO_TEST_SHARE");
  return share == nullptr ? all : std::max(1, all / std::max(1, std::atoi(share)));
}

} // namespace kavo::test
