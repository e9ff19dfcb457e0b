// kavo_figures <file> <json>: the table of all figures that the benchmarks left in the file, and
// the same as JSON. Ends with 1 when a ratio misses its bound by more than a tenth.
#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/figures/figure.h"
#include "bench/figures/files.h"
#include "bench/figures/table.h"

namespace {

int report(const char* path, const char* json_path) {
  const std::vector<kavo::bench::Figure> figures = kavo::bench::read_figures(path);
  if (figures.empty())
    throw std::runtime_error(std::string(path) + " holds no figure");
  kavo::bench::print_table(std::cout, figures);
  std::cout
      << "\nA ratio with >= says how many times as fast as the peer, one with <= how many times "
         "its time.\n";
  std::ofstream json(json_path);
  kavo::bench::write_json(json, figures);
  if (!json.flush())
    throw std::runtime_error(std::string("cannot write ") + json_path);
  const auto missed = std::count_if(figures.begin(), figures.end(), kavo::bench::falls_short);
  std::cout << missed << " ratios miss their bound by more than a tenth\n";
  return missed == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: kavo_figures <file> <json>\n";
    return 2;
  }
  try {
    return report(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::cerr << "kavo_figures: " << error.what() << '\n';
    return 1;
  }
}
