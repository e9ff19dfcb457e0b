#include "tests/game/trace.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace kavo::test {

namespace {

bool starts_number(std::string_view text) {
  return !text.empty() && (std::isdigit(static_cast<unsigned char>(text.front())) != 0 ||
                           text.front() == '-' || text == "inf" || text == "nan");
}

bool is_kind_letter(std::string_view line, size_t index) {
  return (line[index] == 'i' || line[index] == 'f') && index > 0 && line[index - 1] == ' ' &&
         starts_number(line.substr(index + 1));
}

// Texts stay as they are; they are the last argument of every command.
std::string plain_line(std::string_view line) {
  const auto quote = std::min(line.find('"'), line.size());
  std::string result;
  for (size_t index = 0; index < quote; ++index)
    if (!is_kind_letter(line, index))
      result += line[index];
  return result.append(line.substr(quote));
}

std::string_view line_at(const Trace& trace, size_t index) {
  return index < trace.size() ? std::string_view(trace[index]) : "(the end)";
}

} // namespace

Trace plain(const Trace& trace) {
  Trace result;
  std::ranges::transform(trace, std::back_inserter(result), plain_line);
  return result;
}

std::string command_line(std::string_view name, std::initializer_list<double> numbers) {
  std::string line(name);
  for (const double number : numbers) {
    char buffer[32];
    line += ' ';
    line.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr);
  }
  return line;
}

Trace joined(std::initializer_list<Trace> parts) {
  Trace whole;
  for (const Trace& part : parts)
    whole.insert(whole.end(), part.begin(), part.end());
  return whole;
}

Trace only(std::string_view name, const Trace& trace) {
  Trace lines;
  std::ranges::copy_if(trace, std::back_inserter(lines), [name](std::string_view line) {
    return line.substr(0, line.find(' ')) == name;
  });
  return lines;
}

bool contains(const Trace& trace, std::string_view line) {
  return std::ranges::find(trace, line) != trace.end();
}

::testing::AssertionResult same(const Trace& actual, const Trace& expected) {
  const auto [left, right] = std::ranges::mismatch(actual, expected);
  if (left == actual.end() && right == expected.end())
    return ::testing::AssertionSuccess();
  const auto index = static_cast<size_t>(left - actual.begin());
  auto failure = ::testing::AssertionFailure()
                 << "line " << index << " of " << actual.size() << " (expected " << expected.size()
                 << ") is\n  " << line_at(actual, index) << "\ninstead of\n  "
                 << line_at(expected, index);
  for (size_t before = index > 3 ? index - 3 : 0; before < index; ++before)
    failure << "\n(before it: " << actual[before] << ")";
  return failure;
}

} // namespace kavo::test
