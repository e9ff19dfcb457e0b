#include "bench/figures.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <tuple>

namespace bench {

namespace {

constexpr double tolerance = 0.1; // of the bound

bool is_within(const Bound& bound, double value, double slack) {
  return bound.side == Bound::Side::at_most ? value <= bound.limit * (1 + slack)
                                            : value >= bound.limit * (1 - slack);
}

double judged_value(const Figure& figure) {
  return figure.is_ratio() ? ratio(figure) : figure.value;
}

// Three digits that count, without an exponent: 0.0512, 1.79, 84.1, 38900.
std::string short_number(double value) {
  if (value == 0)
    return "0";
  std::ostringstream text;
  text << std::fixed
       << std::setprecision(value >= 100   ? 0
                            : value >= 10  ? 1
                            : value >= 1   ? 2
                            : value >= 0.1 ? 3
                                           : 4)
       << value;
  return text.str();
}

std::string with_unit(double value, const std::string& unit) {
  if (unit != "ns")
    return short_number(value) + (unit.empty() ? "" : " ") + unit;
  if (value < 1e3)
    return short_number(value) + " ns";
  if (value < 1e6)
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

// The names in figures are ours: quotes and backslashes are all that could need it.
std::string quoted(const std::string& text) {
  std::string result = "\"";
  for (const char letter : text) {
    if (letter == '"' || letter == '\\')
      result += '\\';
    result += letter;
  }
  return result + '"';
}

const char* side_name(const Bound& bound) {
  return bound.side == Bound::Side::at_most ? "at_most" : "at_least";
}

void write_object(std::ostream& out, const Figure& figure) {
  out << "{\"program\": " << quoted(figure.program) << ", \"what\": " << quoted(figure.what)
      << ", \"value\": " << figure.value << ", \"unit\": " << quoted(figure.unit);
  if (figure.is_ratio())
    out << ", \"peer\": " << quoted(figure.peer) << ", \"peer_value\": " << figure.peer_value
        << ", \"ratio\": " << ratio(figure);
  if (figure.bound)
    out << ", \"" << side_name(*figure.bound) << "\": " << figure.bound->limit
        << ", \"reaches\": " << (reaches(figure) ? "true" : "false");
  out << '}';
}

// The fields of a line, which tabs divide.
std::vector<std::string> fields_of(const std::string& line) {
  std::vector<std::string> fields;
  std::istringstream stream(line);
  for (std::string field; std::getline(stream, field, '\t');)
    fields.push_back(field);
  return fields;
}

Figure figure_of(const std::vector<std::string>& fields) {
  Figure figure = {fields.at(0), fields.at(1), std::stod(fields.at(2)),
                   fields.at(3), fields.at(4), std::stod(fields.at(5)),
                   std::nullopt};
  if (fields.at(6) == "at_most")
    figure.bound = at_most(std::stod(fields.at(7)));
  else if (fields.at(6) == "at_least")
    figure.bound = at_least(std::stod(fields.at(7)));
  return figure;
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

void print_table(std::ostream& out, const std::vector<Figure>& figures) {
  std::vector<Row> rows = {{"what", "figure", "measured against", "ratio", "bound", "reaches"}};
  for (const Figure& figure : figures)
    rows.push_back(row_of(figure));
  print_rows(out, rows);
}

void write_json(std::ostream& out, const std::vector<Figure>& figures) {
  out << std::setprecision(6) << "[\n";
  for (size_t i = 0; i < figures.size(); ++i) {
    write_object(out, figures[i]);
    out << (i + 1 < figures.size() ? ",\n" : "\n");
  }
  out << "]\n";
}

void append_figures(const std::string& path, const std::vector<Figure>& figures) {
  std::ofstream file(path, std::ios::app);
  file << std::setprecision(9);
  for (const Figure& figure : figures) {
    file << figure.program << '\t' << figure.what << '\t' << figure.value << '\t' << figure.unit
         << '\t' << figure.peer << '\t' << figure.peer_value << '\t';
    if (figure.bound)
      file << side_name(*figure.bound) << '\t' << figure.bound->limit << '\n';
    else
      file << "none\t0\n";
  }
  if (!file.flush())
    throw std::runtime_error("cannot write figures to " + path);
}

std::vector<Figure> read_figures(const std::string& path) {
  std::ifstream file(path);
  if (!file)
    throw std::runtime_error("cannot read figures from " + path);
  std::vector<Figure> figures;
  for (std::string line; std::getline(file, line);) {
    try {
      figures.push_back(figure_of(fields_of(line)));
    } catch (const std::logic_error&) {
      throw std::runtime_error((path + ": not a figure: ").append(line));
    }
  }
  return figures;
}

void hand_on(const std::vector<Figure>& figures) {
  if (const char* path = std::getenv("KAVO_FIGURES"))
    append_figures(path, figures);
}

} // namespace bench
