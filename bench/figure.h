// What a figure is to reach, and a figure that a program measures by itself; scripts/figures makes
// the table of all.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kavo::bench {

// A limit that the figure itself may touch.
struct Bound {
  const char* sign;
  double limit;
};

inline Bound at_most(double limit) {
  return {"<=", limit};
}
inline Bound at_least(double limit) {
  return {">=", limit};
}

// "<= 1.5", or nothing.
std::string text(const std::optional<Bound>& bound);

// Beside a peer the bound is one of their ratio, which means the same on every machine; without
// one it is a bound of the value and holds for the machine that it was set on. Figures of one
// series are a cost at growing sizes, which is not to grow faster than the size.
struct Figure {
  std::string what;
  double value = 0;
  std::string unit; // "ns" for every time
  std::optional<Bound> bound = std::nullopt;
  std::string peer = {}; // empty: measured against nothing
  double peer_value = 0;
  std::string series = {};
  double size = 0;
};

// Into the folder that KAVO_FIGURES names, as <program>.json; to standard output without one.
// Throws std::runtime_error naming the file when it cannot be written.
void write_figures(const std::string& program, const std::vector<Figure>& figures);

// The file of that program in the folder that KAVO_FIGURES names; empty without one.
std::string figures_path(const std::string& program);

} // namespace kavo::bench
