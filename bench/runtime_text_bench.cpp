// Number to text beside snprintf; replace and join beside the straightforward loops over
// std::string, split beside one that allocates each piece. All results are owned on both sides.
#include <array>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "bench/ratios.h"
#include "runtime/qor.h"

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
  kavo::bench::add(name + "/ours", [=] {
    for (const double number : numbers)
      qor_str_free(convert(number));
  });
  kavo::bench::expect(name + "/snprintf", kavo::bench::at_least(3.0));
  kavo::bench::add(name + "/snprintf", [=] {
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
  kavo::bench::add("integer to text/ours", [=] {
    for (const double number : numbers)
      qor_str_free(qor_int_to_str(static_cast<int64_t>(number)));
  });
  kavo::bench::expect("integer to text/snprintf", kavo::bench::at_least(3.0));
  kavo::bench::add("integer to text/snprintf", [=] {
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
  size_t start = 0;
  for (size_t at = 0; (at = text.find(separator, start)) != std::string::npos;
       start = at + separator.size())
    pieces.push_back(text.substr(start, at - start));
  pieces.push_back(text.substr(start));
  return pieces;
}

// Each piece in a block of its own, as the library's are.
std::vector<char*> split_by_allocating_loop(std::string_view text, std::string_view separator) {
  std::vector<char*> pieces;
  const auto add = [&pieces](std::string_view piece) {
    auto* s = static_cast<char*>(malloc(piece.size() + 1));
    std::memcpy(s, piece.data(), piece.size());
    s[piece.size()] = '\0';
    pieces.push_back(s);
  };
  size_t start = 0;
  for (size_t at = 0; (at = text.find(separator, start)) != std::string_view::npos;
       start = at + separator.size())
    add(text.substr(start, at - start));
  add(text.substr(start));
  return pieces;
}

void split_and_free(const std::string& text, const std::string& separator) {
  for (char* piece : split_by_allocating_loop(text, separator))
    free(piece);
}

std::string replaced_by_loop(std::string text, const std::string& find, const std::string& with) {
  for (size_t at = 0; (at = text.find(find, at)) != std::string::npos; at += with.size())
    text.replace(at, find.size(), with);
  return text;
}

std::string joined_by_loop(const std::vector<std::string>& pieces, const std::string& separator) {
  std::string text;
  for (size_t i = 0; i < pieces.size(); ++i) {
    if (i > 0)
      text += separator;
    text += pieces[i];
  }
  return text;
}

// Our work beside the plain loop's, which is to be no faster.
template<typename Ours, typename Loop>
void add_pair(const std::string& name, Ours ours, Loop loop) {
  kavo::bench::add(name + "/ours", ours);
  kavo::bench::add(name + "/loop", loop);
  kavo::bench::expect(name + "/loop", kavo::bench::at_least(1.0));
}

// The array lives as long as the process.
void add_pieces(const std::string& size, size_t words) {
  std::string text;
  for (size_t i = 0; i < words; ++i)
    text += "word" + std::to_string(i) + ", ";
  const auto keep = [](const auto& result) { benchmark::DoNotOptimize(result.data()); };
  add_pair(
      "split " + size, [=] { qor_array_free_deep(qor_split(text.c_str(), ", ")); },
      [=] { split_and_free(text, ", "); });
  add_pair(
      "replace by as much " + size, [=] { qor_str_free(qor_replace(text.c_str(), ", ", "; ")); },
      [=] { keep(replaced_by_loop(text, ", ", "; ")); });
  add_pair(
      "replace by more " + size, [=] { qor_str_free(qor_replace(text.c_str(), ", ", " and ")); },
      [=] { keep(replaced_by_loop(text, ", ", " and ")); });
  const auto pieces = split_by_loop(text, ", ");
  const auto* array = qor_split(text.c_str(), ", ");
  kavo::bench::add("join " + size + "/ours", [=] { qor_str_free(qor_join_arr(array, "; ")); });
  kavo::bench::add("join " + size + "/loop", [=] { keep(joined_by_loop(pieces, "; ")); });
}

void add_lines() {
  std::string text;
  for (int i = 0; i < 1000; ++i)
    text += "a line of some forty characters, no. " + std::to_string(i) + "\n";
  add_pair(
      "split 1000 lines", [=] { qor_array_free_deep(qor_split(text.c_str(), "\n")); },
      [=] { split_and_free(text, "\n"); });
}

void add_format() {
  kavo::bench::add("format three numbers/ours", [] {
    qor_str_free(qor_format3("{>6d} of {d}: {.2f} per cent", 123.0, 456.0, 26.97));
  });
  kavo::bench::add("format three numbers/snprintf", [] {
    std::array<char, 64> buffer;
    std::snprintf(buffer.data(), buffer.size(), "%6lld of %lld: %.2f per cent", 123LL, 456LL,
                  26.97);
    auto* copy = strdup(buffer.data());
    benchmark::DoNotOptimize(copy);
    free(copy);
  });
  kavo::bench::expect("format three numbers/snprintf", kavo::bench::at_least(1.0));
}

} // namespace

int main(int argc, char** argv) {
  add_conversion("double to text, %g", "%g", 1000, qor_double_to_str);
  add_conversion("double to text, six decimals", "%.6f", 1000, qor_str);
  add_integers();
  add_format();
  add_lines();
  add_pieces("4 words", 4);
  add_pieces("20 words", 20);
  add_pieces("10000 words", 10000);
  return kavo::bench::run(argc, argv);
}
