// Regular expressions.
#include "runtime/error.h"
// GCC 12 warns inside its own <regex> when the sanitizers are on (its bug 105562).
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <regex>
#include <string>

#include "runtime/regex.h"
#include "tests/runtime/values.h"
#include "tests/support/rounds.h"

namespace {

using kavo::test::Strings;
using kavo::test::take;
using kavo::test::take_strings;

TEST(RegexMatch, IsOfTheWholeText) {
  EXPECT_EQ(qor_regex_match("[a-z]+", "abc"), 1);
  EXPECT_EQ(qor_regex_match("[a-z]+", "abc1"), 0);
  EXPECT_EQ(qor_regex_match("[\\s\\S]*b[\\s\\S]*", "a\nb\nc"), 1);
}

TEST(RegexMatch, TakesNullAsEmpty) {
  EXPECT_EQ(qor_regex_match("", nullptr), 1);
  EXPECT_EQ(qor_regex_match(nullptr, "a"), 0);
  EXPECT_EQ(qor_regex_match(nullptr, ""), 1);
}

TEST(RegexMatch, OfAnInvalidPatternIsZeroAndNoError) {
  qor_err_clear();
  for (const char* pattern : {"(", "[", "a{2", "*", "\\"})
    EXPECT_EQ(qor_regex_match(pattern, pattern), 0) << pattern;
  EXPECT_EQ(qor_err_code_visible(), 0);
}

TEST(RegexReplace, ReplacesEveryMatch) {
  EXPECT_EQ(take(qor_regex_replace("[0-9]+", "a1b22c", "#")), "a#b#c");
  EXPECT_EQ(take(qor_regex_replace("x", "abc", "#")), "abc");
}

TEST(RegexReplace, PutsGroupsIn) {
  EXPECT_EQ(take(qor_regex_replace("(\\w+)@(\\w+)", "ada@home", "$2 at $1: $& $$")),
            "home at ada: ada@home $");
}

TEST(RegexReplace, OfAnInvalidPatternLeavesTheText) {
  EXPECT_EQ(take(qor_regex_replace("(", "a(b", "#")), "a(b");
}

TEST(RegexReplace, TakesNullAsEmpty) {
  EXPECT_EQ(take(qor_regex_replace("a", "banana", nullptr)), "bnn");
  EXPECT_EQ(take(qor_regex_replace("a", nullptr, "b")), "");
}

TEST(RegexFindall, GivesTheMatchesInOrder) {
  EXPECT_EQ(take_strings(qor_regex_findall("[0-9]+", "a1b22c333")), (Strings{"1", "22", "333"}));
  EXPECT_EQ(take_strings(qor_regex_findall("x", "abc")), Strings{});
  EXPECT_EQ(take_strings(qor_regex_findall("[", "abc")), Strings{});
  EXPECT_EQ(take_strings(qor_regex_findall("a", nullptr)), Strings{});
}

TEST(RegexFindall, CountsEmptyMatches) {
  EXPECT_EQ(take_strings(qor_regex_findall("b*", "abb")), (Strings{"", "bb", ""}));
}

TEST(RegexFindall, MakesAStringArray) {
  EXPECT_EQ(kavo::test::own_deep(qor_regex_findall("b", "b"))->flags,
            QOR_FLAG_NESTED | QOR_FLAG_STRINGS);
}

// The standard library's matcher recurses for every byte.
TEST(Regex, TakesLongTexts) {
  const std::string text(200000, 'a');
  EXPECT_EQ(qor_regex_match("(a|b)*", text.c_str()), 1);
  EXPECT_EQ(take(qor_regex_replace("(?:a|b)+", text.c_str(), "x")), "x");
}

TEST(Regex, TakesDeepPatterns) {
  for (const size_t depth : {900, 1001, 30000}) {
    const auto pattern = std::string(depth, '(') + "a" + std::string(depth, ')') + "*";
    EXPECT_EQ(qor_regex_match(pattern.c_str(), "aaa"), 1) << depth;
    EXPECT_EQ(qor_regex_match(pattern.c_str(), "aab"), 0) << depth;
  }
  EXPECT_EQ(qor_regex_match(std::string(30000, '(').c_str(), "a"), 0);
  EXPECT_EQ(qor_regex_match(std::string(1000000, '(').c_str(), "a"), 0);
}

TEST(Regex, TakesCountedRepetitions) {
  const auto text = std::string(5000, 'a');
  EXPECT_EQ(qor_regex_match("((a?){20}b?)*", text.c_str()), 1);
  EXPECT_EQ(qor_regex_match("a{2,3}{4}", "aaaaaaaaa"), 1);
}

TEST(Regex, RefusesWhatWouldNeedATerabyteOfStack) {
  const auto text = std::string(10000000, 'a');
  EXPECT_EQ(qor_regex_match("(((a{1,9}){1,9}){1,9})*", text.c_str()), 0);
}

TEST(RegexProperty, GivesWhatTheStandardLibraryGives) {
  std::mt19937 random(1); // the same texts every time
  const std::array patterns{"a+", "(a|b)c?", "[^a]*",  "b(a)?",  "^a",
                            "c$", "\\bab",   "(?=a)a", "(?!b).", "(a)(b)\\1"};
  for (int i = kavo::test::rounds(2000); i > 0; --i) {
    std::string text(random() % 12, ' ');
    for (char& c : text)
      c = "abc "[random() % 4];
    const auto* pattern = patterns[random() % patterns.size()];
    const std::regex regex(pattern);
    ASSERT_EQ(qor_regex_match(pattern, text.c_str()), std::regex_match(text, regex) ? 1 : 0);
    ASSERT_EQ(take(qor_regex_replace(pattern, text.c_str(), "<$&>")),
              std::regex_replace(text, regex, "<$&>"));
    Strings matches;
    for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match)
      matches.push_back(match->str());
    ASSERT_EQ(take_strings(qor_regex_findall(pattern, text.c_str())), matches);
  }
}

} // namespace
