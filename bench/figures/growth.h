// How a cost grows: linearly with the size of what it is for, or better.
#pragma once

#include <vector>

#include "bench/figures/figure.h"

namespace kavo::bench {

// One cost at growing sizes: from the second on each is measured against the one before it, grown
// as the size has, and is to be no more. Behind a size of zero, of which nothing is a multiple, a
// cost stays as it is.
std::vector<Figure> growth(std::vector<Figure> costs, const std::vector<double>& sizes);

} // namespace kavo::bench
