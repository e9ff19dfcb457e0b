#include "bench/figures/growth.h"

#include "bench/figures/table.h"

namespace kavo::bench {

std::vector<Figure> growth(std::vector<Figure> costs, const std::vector<double>& sizes) {
  for (size_t i = 1; i < costs.size(); ++i) {
    if (sizes.at(i - 1) == 0)
      continue;
    const double times = sizes.at(i) / sizes.at(i - 1);
    costs[i].peer = short_number(times) + " times the one before";
    costs[i].peer_value = times * costs[i - 1].value;
    costs[i].bound = at_most(1);
  }
  return costs;
}

} // namespace kavo::bench
