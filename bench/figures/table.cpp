#include "bench/figures/table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <tuple>

namespace kavo::bench {

namespace {

std::string with_unit(double value, const std::string& unit) {
  if (unit != "ns")
    return short_number(value) + (unit.empty() ? "" : " ") + unit;
  if (std::abs(value) < 1e3)
    return short_number(value) + " ns";
  if (std::abs(value) < 1e6)
    return short_number(value / 1e3) + " us";
  return short_number(value / 1e6) + " ms";
}

std::string limit_text(const Figure& figure) {
  if (!figure.bound)
    return "";
  const std::string sign = figure.bound->side == Bound::Side::at_most ? "<= " : ">= ";
  const double limit = figure.bound->limit;
  return sign + (figure.is_ratio() ? short_number(limit) : with_unit(limit, figure.unit));
}

std::string verdict(const Figure& figure) {
  if (!figure.bound)
    return "";
  if (reaches(figure))
    return "yes";
  return falls_short(figure) ? "NO" : "no";
}

using Row = std::array<std::string, 6>;

Row row_of(const Figure& figure) {
  Row row = {figure.what,    with_unit(figure.value, figure.unit), "", "", limit_text(figure),
             verdict(figure)};
  if (figure.is_ratio()) {
    row[2] = figure.peer + ", " + with_unit(figure.peer_value, figure.unit);
    row[3] = short_number(ratio(figure));
  }
  return row;
}

void print_rows(std::ostream& out, const std::vector<Row>& rows) {
  std::array<size_t, std::tuple_size_v<Row>> widths = {};
  for (const Row& row : rows)
    for (size_t i = 0; i < row.size(); ++i)
      widths[i] = std::max(widths[i], row[i].size());
  for (const Row& row : rows) {
    std::string line;
    for (size_t i = 0; i < row.size(); ++i)
      line += row[i] + std::string(widths[i] - row[i].size() + 2, ' ');
    out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
  }
}

} // namespace

std::string short_number(double value) {
  constexpr int digits = 3;
  std::ostringstream text;
  if (value != 0 && std::isfinite(value)) {
    const int before_point = static_cast<int>(std::floor(std::log10(std::abs(value)))) + 1;
    text << std::fixed << std::setprecision(std::max(0, digits - before_point));
  }
  text << value;
  return text.str();
}

void print_table(std::ostream& out, const std::vector<Figure>& figures) {
  std::vector<Row> rows = {{"what", "figure", "measured against", "ratio", "bound", "reaches"}};
  for (const Figure& figure : figures)
    rows.push_back(row_of(figure));
  print_rows(out, rows);
}

} // namespace kavo::bench
