// Figures in files: between the programs that measure and the one that reports, and as JSON for
// whoever wants to go on with them.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "bench/figures/figure.h"

namespace kavo::bench {

// As an array of objects, one a line. What is no number there is null.
void write_json(std::ostream& out, const std::vector<Figure>& figures);

// A line for each figure, its fields divided by tabs. Both throw std::runtime_error, naming the
// file, when it cannot be opened or a line is damaged.
void append_figures(const std::string& path, const std::vector<Figure>& figures);
std::vector<Figure> read_figures(const std::string& path);

// Appends to the file that KAVO_FIGURES names, when it names one.
void hand_on(const std::vector<Figure>& figures);

} // namespace kavo::bench
