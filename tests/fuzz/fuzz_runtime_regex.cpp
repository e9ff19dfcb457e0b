// Regular expressions: any pattern that is short, since backtracking may take exponential time.
#include <cctype>

#include "runtime/regex.h"
#include "tests/fuzz/input.h"

namespace {

// Counted repetitions of repetitions are patterns of thousands of states, and (||){99} has 3^99
// ways not to match.
bool has_large_count(const std::string& pattern) {
  const auto is_digit = [](unsigned char c) { return std::isdigit(c) != 0; };
  const auto two_digits = [&](unsigned char a, unsigned char b) {
    return is_digit(a) && is_digit(b);
  };
  return std::ranges::count(pattern, '{') > 1 ||
         std::ranges::adjacent_find(pattern, two_digits) != pattern.end();
}

// Each repetition of a repetition multiplies the time: .*+*N takes minutes for seven bytes.
bool repeats_repetitions(const std::string& pattern) {
  constexpr std::string_view repeats = "*+?{";
  int again = 0;
  for (size_t i = 1; i < pattern.size(); ++i) {
    const bool follows = pattern[i - 1] == ')' || repeats.find(pattern[i - 1]) != repeats.npos;
    again += follows && repeats.find(pattern[i]) != repeats.npos ? 1 : 0;
  }
  return again > 1;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kavo::fuzz::Input input(data, size);
  const auto pattern = input.text(10);
  const auto text = input.text(7);
  const auto replacement = input.text(8);
  if (has_large_count(pattern) || repeats_repetitions(pattern))
    return 0;
  const bool matches = qor_regex_match(pattern.c_str(), text.c_str()) != 0;
  const kavo::fuzz::Array found(qor_regex_findall(pattern.c_str(), text.c_str()));
  const kavo::fuzz::Text replaced(
      qor_regex_replace(pattern.c_str(), text.c_str(), replacement.c_str()));
  kavo::fuzz::require(!matches || qor_array_len(found.get()) > 0, "a match of all is a match");
  if (qor_array_len(found.get()) == 0)
    kavo::fuzz::require(text == replaced.get(), "without a match nothing is replaced");
  return 0;
}
