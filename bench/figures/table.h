// The table of figures that people read.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "bench/figures/figure.h"

namespace kavo::bench {

// Three digits that count, without an exponent: 0.0512, 1.79, 84.1, 38900.
std::string short_number(double value);

// A row for each figure below a row of headings; the verdict is "no" for a bound that is missed
// and "NO" for one that falls_short().
void print_table(std::ostream& out, const std::vector<Figure>& figures);

} // namespace kavo::bench
