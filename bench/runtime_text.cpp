// Number to text beside snprintf, replace and split beside the straightforward loops over
// std::string. All results are owned on both sides.
#include "bench/ratios.h"
#include "runtime/qor.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

std::vector<double> make_numbers(double scale) {
  std::mt19937_64 random(1);
  std::vector<double> numbers(1000);
  for (double& number : numbers)
    number = static_cast<double>(random() >> 11) * 0x1p-53 * scale;
  return numbers;
}

template<typename Convert>
void add_conversion(const std::string& name, const char* format, double scale, Convert convert) {
  const auto numbers = make_numbers(scale);
  bench::add(name + "/ours", [=] {
    for (const double number : numbers)
      qor_str_free(convert(number));
  });
  bench::add(name + "/snprintf", [=] {
    std::array<char, 64> buffer;
    for (const double number : numbers) {
      std::snprintf(buffer.data(), buffer.size(), format, number);
      auto* copy = strdup(buffer.data());
      benchmark::DoNotOptimize(copy);
      free(copy);
    }
  });
}

void add_integers() {
  const auto numbers = make_numbers(1e9);
  bench::add("integer to text/ours", [=] {
    for (const double number : numbers)
      qor_str_free(qor_int_to_str(static_cast<int64_t>(number)));
  });
  bench::add("integer to text/snprintf", [=] {
    std::array<char, 64> buffer;
    for (const double number : numbers) {
      std::snprintf(buffer.data(), buffer.size(), "%lld", static_cast<long long>(number));
      auto* copy = strdup(buffer.data());
      benchmark::DoNotOptimize(copy);
      free(copy);
    }
  });
}

std::vector<std::string> split_by_loop(const std::string& text, const std::string& separator) {
  std::vector<std::string> pieces;
  std::size_t start = 0;
  for (std::size_t at = 0; (at = text.find(separator, start)) != std::string::npos;
       start = at + separator.size())
    pieces.push_back(text.substr(start, at - start));
  pieces.push_back(text.substr(start));
  return pieces;
}

std::string replaced_by_loop(std::string text, const std::string& find, const std::string& with) {
  for (std::size_t at = 0; (at = text.find(find, at)) != std::string::npos; at += with.size())
    text.replace(at, find.size(), with);
  return text;
}

void add_pieces(const std::string& size, std::size_t words) {
  std::string text;
  for (std::size_t i = 0; i < words; ++i)
    text += "word" + std::to_string(i) + ", ";
  bench::add("split " + size + "/ours",
             [=] { qor_array_free_deep(qor_split(text.c_str(), ", ")); });
  bench::add("split " + size + "/loop",
             [=] { benchmark::DoNotOptimize(split_by_loop(text, ", ").data()); });
  bench::add("replace by as much " + size + "/ours",
             [=] { qor_str_free(qor_replace(text.c_str(), ", ", "; ")); });
  bench::add("replace by as much " + size + "/loop",
             [=] { benchmark::DoNotOptimize(replaced_by_loop(text, ", ", "; ").data()); });
  bench::add("replace by more " + size + "/ours",
             [=] { qor_str_free(qor_replace(text.c_str(), ", ", " and ")); });
  bench::add("replace by more " + size + "/loop",
             [=] { benchmark::DoNotOptimize(replaced_by_loop(text, ", ", " and ").data()); });
}

// Lines, which no std::string keeps inside itself.
void add_lines() {
  std::string text;
  for (int i = 0; i < 1000; ++i)
    text += "a line of some forty characters, no. " + std::to_string(i) + "\n";
  bench::add("split 1000 lines/ours", [=] { qor_array_free_deep(qor_split(text.c_str(), "\n")); });
  bench::add("split 1000 lines/loop",
             [=] { benchmark::DoNotOptimize(split_by_loop(text, "\n").data()); });
}

} // namespace

int main(int argc, char** argv) {
  add_conversion("double to text, %g", "%g", 1000, qor_double_to_str);
  add_conversion("double to text, six decimals", "%.6f", 1000, qor_str);
  add_integers();
  add_lines();
  add_pieces("4 words", 4);
  add_pieces("20 words", 20);
  add_pieces("10000 words", 10000);
  return bench::run(argc, argv);
}
