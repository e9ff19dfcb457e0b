// What a program's benchmarks are to give: which of them stand in pairs, which are figures of their
// own, which tell how a cost grows, and what each is to reach.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "bench/figures/figure.h"

namespace kavo::bench {

// Medians over the repetitions, by the benchmarks' names.
struct Measured {
  std::map<std::string, double> times; // nanoseconds
  std::map<std::string, std::map<std::string, double>> counters;
};

class Plan {
public:
  // "<what>/<peer>" is the time that "<what>/ours" is measured against. A pair without a bound is
  // a figure as well, only not judged.
  void expect(const std::string& peer_name, Bound bound);

  // One benchmark's time, or one of its counters. `factor` turns the counter into the unit.
  void report_time(const std::string& name, std::optional<Bound> bound);
  void report_counter(const std::string& name, const std::string& counter, const std::string& unit,
                      std::optional<Bound> bound, double factor);

  // The times of "<name>/<size>" for growing sizes: none is to grow faster than the size.
  void report_growth(const std::string& name, const std::vector<int>& sizes);

  // Reported ones in the order in which they were asked for, then growths, then pairs by name, so
  // that two runs give the same table. What was not measured is left out.
  std::vector<Figure> figures(const std::string& program, const Measured& measured) const;

  // The benchmarks and counters that were asked for and not measured: a misspelt one would never
  // be judged.
  std::vector<std::string> missing(const Measured& measured) const;

private:
  struct Reported {
    std::string name;
    std::string counter; // empty: the time
    std::string unit;
    std::optional<Bound> bound;
    double factor;

    std::string what() const { return counter.empty() ? name : name + ", " + counter; }
    std::optional<double> value(const Measured& measured) const;
  };
  struct Growth {
    std::string name;
    std::vector<int> sizes;

    std::string at(int size) const { return name + "/" + std::to_string(size); }
    std::vector<Figure> figures(const std::string& program, const Measured& measured) const;
  };

  std::vector<Figure> pair_figures(const std::string& program, const Measured& measured) const;

  std::vector<Reported> reported_;
  std::vector<Growth> growths_;
  std::map<std::string, Bound> pairs_; // by the peer's name
};

} // namespace kavo::bench
