// A measured figure: what it is, what it is measured against, what it is to reach, and the verdict.
#pragma once

#include <optional>
#include <string>

namespace kavo::bench {

// A limit that the figure itself may touch.
struct Bound {
  enum class Side { at_most, at_least };
  Side side;
  double limit;
};

inline Bound at_most(double limit) {
  return {Bound::Side::at_most, limit};
}
inline Bound at_least(double limit) {
  return {Bound::Side::at_least, limit};
}

// Beside a peer the bound is one of their ratio, which means the same on every machine; without
// one it is a bound of the value and holds for the machine that it was set on.
struct Figure {
  std::string program; // that measured it
  std::string what;
  double value = 0;
  std::string unit; // "ns" for every time
  std::string peer; // empty: measured against nothing
  double peer_value = 0;
  std::optional<Bound> bound;

  bool is_ratio() const { return !peer.empty(); }
};

// Under a bound of the "at most" kind our value as a multiple of the peer's; else how many times
// as large the peer's is. Only where is_ratio().
double ratio(const Figure& figure);

// True without a bound.
bool reaches(const Figure& figure);

// A ratio that misses its bound by more than a tenth, or is no number. Less than that is within
// what a busy machine does to it, and a value alone says more about the machine than about us.
bool falls_short(const Figure& figure);

} // namespace kavo::bench
