#include "bench/figures/figure.h"

namespace kavo::bench {

namespace {

constexpr double tolerance = 0.1; // of the bound

bool is_within(const Bound& bound, double value, double slack) {
  return bound.side == Bound::Side::at_most ? value <= bound.limit * (1 + slack)
                                            : value >= bound.limit * (1 - slack);
}

double judged_value(const Figure& figure) {
  return figure.is_ratio() ? ratio(figure) : figure.value;
}

} // namespace

double ratio(const Figure& figure) {
  const bool is_multiple = figure.bound && figure.bound->side == Bound::Side::at_most;
  return is_multiple ? figure.value / figure.peer_value : figure.peer_value / figure.value;
}

bool reaches(const Figure& figure) {
  return !figure.bound || is_within(*figure.bound, judged_value(figure), 0);
}

bool falls_short(const Figure& figure) {
  return figure.is_ratio() && figure.bound && !is_within(*figure.bound, ratio(figure), tolerance);
}

} // namespace kavo::bench
