#include "bench/figures/files.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace kavo::bench {

namespace {

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

// JSON has no word for infinity, nor for what is no number.
std::string json_number(double value) {
  std::ostringstream text;
  text << std::setprecision(6);
  if (std::isfinite(value))
    text << value;
  else
    text << "null";
  return text.str();
}

void write_object(std::ostream& out, const Figure& figure) {
  out << "{\"program\": " << quoted(figure.program) << ", \"what\": " << quoted(figure.what)
      << ", \"value\": " << json_number(figure.value) << ", \"unit\": " << quoted(figure.unit);
  if (figure.is_ratio())
    out << ", \"peer\": " << quoted(figure.peer)
        << ", \"peer_value\": " << json_number(figure.peer_value)
        << ", \"ratio\": " << json_number(ratio(figure));
  if (figure.bound)
    out << ", \"" << side_name(*figure.bound) << "\": " << json_number(figure.bound->limit)
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

double number_of(const std::string& field) {
  size_t used = 0;
  const double number = std::stod(field, &used);
  if (used != field.size())
    throw std::invalid_argument(field);
  return number;
}

std::optional<Bound> bound_of(const std::string& side, const std::string& limit) {
  if (side == "at_most")
    return at_most(number_of(limit));
  if (side == "at_least")
    return at_least(number_of(limit));
  if (side != "none")
    throw std::invalid_argument(side);
  return std::nullopt;
}

Figure figure_of(const std::vector<std::string>& fields) {
  return {fields.at(0),
          fields.at(1),
          number_of(fields.at(2)),
          fields.at(3),
          fields.at(4),
          number_of(fields.at(5)),
          bound_of(fields.at(6), fields.at(7))};
}

} // namespace

void write_json(std::ostream& out, const std::vector<Figure>& figures) {
  out << "[\n";
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

} // namespace kavo::bench
