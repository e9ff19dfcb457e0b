// Commands as lines of text, the way the recording host writes them down, and ways to compare them.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace kavo::test {

using Trace = std::vector<std::string>;

// The lines without the letters that tell whole numbers (i) from the others (f):
// "RECT i0 f1.5 i34 i34 i1" becomes "RECT 0 1.5 34 34 1".
Trace plain(const Trace& trace);

// One plain line from a name and its numbers.
std::string command_line(std::string_view name, std::initializer_list<double> numbers);

// The parts one after the other.
Trace joined(std::initializer_list<Trace> parts);

// The lines of these commands only.
Trace only(std::string_view name, const Trace& trace);

bool contains(const Trace& trace, std::string_view line);

// Equality that names the first line in which they differ, with what stands before it.
::testing::AssertionResult same(const Trace& actual, const Trace& expected);

} // namespace kavo::test
