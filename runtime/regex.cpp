// GCC 12 warns inside its own <regex> when the sanitizers are on (its bug 105562).
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include "runtime/regex.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <regex>
#include <string_view>

#include "runtime/internal/containers.h"
#include "runtime/internal/deep_stack.h"
#include "runtime/internal/string_list.h"
#include "runtime/internal/strings.h"

namespace {

// The standard library's matcher calls itself for every state of the pattern on every byte of the
// text: measured at up to 160 bytes of stack for each pair, and 690 under the sanitizers.
#if defined(__SANITIZE_ADDRESS__) || defined(__clang__)
constexpr double stack_per_step = 1024;
#else
constexpr double stack_per_step = 192;
#endif
constexpr double most_states = 100000; // the library refuses patterns beyond that
constexpr double largest_stack = (sizeof(size_t) > 4 ? 64.0 : 1.0) * (1 << 30);

// Its parser recurses into parentheses, each of which is a state at least.
constexpr size_t stack_per_level = 16384;

size_t nesting(std::string_view pattern) {
  size_t depth = 0;
  size_t deepest = 0;
  for (const char c : pattern) {
    depth += c == '(' ? 1 : 0;
    depth -= c == ')' && depth > 0 ? 1 : 0;
    deepest = std::max(deepest, depth);
  }
  return deepest;
}

// None when the pattern is refused. Exceptions are thrown on stacks of ordinary size only, since
// the address sanitizer cannot follow them on others.
std::optional<std::regex> compiled(std::string_view pattern) {
  std::optional<std::regex> regex;
  const auto levels = nesting(pattern);
  if (static_cast<double>(levels) > most_states)
    return regex;
  qor::run_with_stack(levels * stack_per_level, [&] {
    try {
      qor::with_enough_memory([&] { regex.emplace(pattern.begin(), pattern.end()); });
    } catch (const std::regex_error&) {
      regex.reset();
    }
  });
  return regex;
}

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
  return (static_cast<double>(text.size()) + 1) * states * stack_per_step;
}

// Compiles the pattern and runs `use` with it; false when either is refused.
template<typename Use>
bool with_pattern(std::string_view pattern, std::string_view text, Use use) {
  const auto regex = compiled(pattern);
  const double stack = stack_needed(pattern, text);
  return regex && stack <= largest_stack && qor::run_with_stack(static_cast<size_t>(stack), [&] {
           qor::with_enough_memory([&] { use(*regex); });
         });
}

} // namespace

int qor_regex_match(const char* pattern, const char* text) {
  const auto subject = qor::text_of(text);
  bool matches = false;
  with_pattern(qor::text_of(pattern), subject, [&](const std::regex& regex) {
    matches = std::regex_match(subject.begin(), subject.end(), regex);
  });
  return matches ? 1 : 0;
}

char* qor_regex_replace(const char* pattern, const char* text, const char* replacement) {
  const auto subject = qor::text_of(text);
  qor::String result;
  const bool is_done = with_pattern(qor::text_of(pattern), subject, [&](const std::regex& regex) {
    std::regex_replace(std::back_inserter(result), subject.begin(), subject.end(), regex,
                       qor::String(qor::text_of(replacement)));
  });
  return qor::new_string(is_done ? std::string_view(result) : subject);
}

QorArray* qor_regex_findall(const char* pattern, const char* text) {
  const auto subject = qor::text_of(text);
  qor::Vector<std::string_view> matches;
  const bool is_done = with_pattern(qor::text_of(pattern), subject, [&](const std::regex& regex) {
    using Iterator = std::regex_iterator<std::string_view::const_iterator>;
    for (Iterator match(subject.begin(), subject.end(), regex); match != Iterator(); ++match)
      matches.push_back(subject.substr(static_cast<size_t>(match->position()),
                                       static_cast<size_t>(match->length())));
  });
  qor::StringList found;
  if (is_done)
    for (const auto match : matches)
      found.add(match);
  return found.release();
}
