#include "runtime/regex.h"

#include "runtime/internal/deep_stack.h"
#include "runtime/internal/string_list.h"
#include "runtime/internal/strings.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

namespace {

// The standard library's matcher calls itself for every state of the pattern on every byte of the
// text: measured at up to 160 bytes of stack for each pair, and 690 under the sanitizers.
#if defined(__SANITIZE_ADDRESS__) || defined(__clang__)
constexpr double stack_per_step = 1024;
#else
constexpr double stack_per_step = 192;
#endif
constexpr double stack_per_pattern_byte = 8192; // the parser recurses too, into parentheses
constexpr double most_states = 100000;          // the library refuses patterns beyond that
constexpr double largest_stack = 64.0 * (1 << 30);

// How many copies of a part of the pattern its counted repetitions may make.
double repetitions(std::string_view pattern) {
  double product = 1;
  double count = 0;
  bool is_inside = false;
  for (const char c : pattern) {
    if (is_inside && c >= '0' && c <= '9') {
      count = count * 10 + (c - '0');
      continue;
    }
    product *= std::max(count, 1.0);
    count = 0;
    is_inside = c == '{' || (is_inside && c == ',');
  }
  return std::min(product, most_states);
}

double stack_needed(std::string_view pattern, std::string_view text) {
  const auto pattern_size = static_cast<double>(pattern.size());
  const double states = std::min(pattern_size * repetitions(pattern), most_states);
  return (static_cast<double>(text.size()) + 1) * states * stack_per_step +
         pattern_size * stack_per_pattern_byte;
}

// Compiles the pattern and runs `use` with it; false when either is refused.
template<typename Use>
bool with_pattern(const char* pattern, std::string_view text, Use use) {
  const double stack = stack_needed(qor::text_of(pattern), text);
  if (stack > largest_stack)
    return false;
  bool is_done = false;
  const auto work = [&] {
    try {
      use(std::regex(pattern == nullptr ? "" : pattern));
      is_done = true;
    } catch (const std::exception&) {
      is_done = false;
    }
  };
  return qor::run_with_stack(static_cast<std::size_t>(stack), work) && is_done;
}

} // namespace

int qor_regex_match(const char* pattern, const char* text) {
  const auto subject = qor::text_of(text);
  bool matches = false;
  with_pattern(pattern, subject, [&](const std::regex& regex) {
    matches = std::regex_match(subject.begin(), subject.end(), regex);
  });
  return matches ? 1 : 0;
}

char* qor_regex_replace(const char* pattern, const char* text, const char* replacement) {
  const auto subject = qor::text_of(text);
  std::string result;
  const bool is_done = with_pattern(pattern, subject, [&](const std::regex& regex) {
    std::regex_replace(std::back_inserter(result), subject.begin(), subject.end(), regex,
                       std::string(qor::text_of(replacement)));
  });
  return qor::new_string(is_done ? std::string_view(result) : subject);
}

QorArray* qor_regex_findall(const char* pattern, const char* text) {
  const auto subject = qor::text_of(text);
  std::vector<std::string_view> matches;
  const bool is_done = with_pattern(pattern, subject, [&](const std::regex& regex) {
    using Iterator = std::regex_iterator<std::string_view::const_iterator>;
    for (Iterator match(subject.begin(), subject.end(), regex); match != Iterator(); ++match)
      matches.push_back(subject.substr(static_cast<std::size_t>(match->position()),
                                       static_cast<std::size_t>(match->length())));
  });
  qor::StringList found;
  if (is_done)
    for (const auto match : matches)
      found.add(match);
  return found.release();
}
