#include "bench/figure.h"

#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace kavo::bench {

namespace {

void write_figure(std::ostream& out, const std::string& program, const Figure& figure) {
  out << R"({"program": )" << std::quoted(program) << R"(, "what": )" << std::quoted(figure.what)
      << R"(, "value": )" << figure.value << R"(, "unit": )" << std::quoted(figure.unit);
  if (!figure.peer.empty())
    out << R"(, "peer": )" << std::quoted(figure.peer) << R"(, "peer_value": )"
        << figure.peer_value;
  if (figure.bound)
    out << (figure.bound->sign == std::string("<=") ? R"(, "at_most": )" : R"(, "at_least": )")
        << figure.bound->limit;
  if (!figure.series.empty())
    out << R"(, "series": )" << std::quoted(figure.series) << R"(, "size": )" << figure.size;
  out << '}';
}

} // namespace

std::string text(const std::optional<Bound>& bound) {
  std::ostringstream text;
  if (bound)
    text << bound->sign << ' ' << bound->limit;
  return text.str();
}

std::string figures_path(const std::string& program) {
  const char* folder = std::getenv("KAVO_FIGURES");
  return folder == nullptr ? "" : std::string(folder) + "/" + program + ".json";
}

void write_figures(const std::string& program, const std::vector<Figure>& figures) {
  const std::string path = figures_path(program);
  std::ofstream file(path);
  std::ostream& out = path.empty() ? std::cout : file;
  out << std::setprecision(9) << R"({"figures": [)";
  const char* comma = "\n";
  for (const Figure& figure : figures)
    write_figure(out << std::exchange(comma, ",\n"), program, figure);
  out << "\n]}\n";
  if (!out.flush())
    throw std::runtime_error("cannot write figures to " + path);
}

} // namespace kavo::bench
