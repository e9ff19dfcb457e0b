// Strings taken apart and put together: replacing, splitting, joining, characters.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "runtime/qorrt.h"
#include "runtime/text.h"
#include "tests/fakes/binary_strings.h"
#include "tests/runtime/values.h"
#include "tests/support/rounds.h"

namespace {

using kavo::test::Strings;
using kavo::test::take;
using kavo::test::take_strings;

Strings pieces_by_loop(const std::string& text, const std::string& separator) {
  Strings pieces;
  size_t start = 0;
  for (size_t at = 0; (at = text.find(separator, start)) != std::string::npos;
       start = at + separator.size())
    pieces.push_back(text.substr(start, at - start));
  pieces.push_back(text.substr(start));
  return pieces;
}

std::string replaced_by_loop(std::string text, const std::string& find, const std::string& with) {
  for (size_t at = 0; !find.empty() && (at = text.find(find, at)) != std::string::npos;
       at += with.size())
    text.replace(at, find.size(), with);
  return text;
}

TEST(Replace, ReplacesEveryOccurrenceLeftToRight) {
  EXPECT_EQ(take(qor_replace("a-b-c", "-", "+")), "a+b+c");
  EXPECT_EQ(take(qor_replace("aaaa", "aa", "b")), "bb");
  EXPECT_EQ(take(qor_replace("aaa", "aa", "b")), "ba");
  EXPECT_EQ(take(qor_replace("abc", "abc", "")), "");
  EXPECT_EQ(take(qor_replace("abc", "x", "y")), "abc");
}

TEST(Replace, DoesNotLookAtWhatItPutIn) {
  EXPECT_EQ(take(qor_replace("aa", "a", "aa")), "aaaa");
}

TEST(Replace, OfAnEmptyTextToFindCopies) {
  EXPECT_EQ(take(qor_replace("abc", "", "x")), "abc");
  EXPECT_EQ(take(qor_replace("abc", nullptr, "x")), "abc");
  EXPECT_EQ(take(qor_replace(nullptr, "a", "x")), "");
  EXPECT_EQ(take(qor_replace("abc", "b", nullptr)), "ac");
}

TEST(Split, GivesThePiecesBetween) {
  EXPECT_EQ(take_strings(qor_split("a,b,,c", ",")), (Strings{"a", "b", "", "c"}));
  EXPECT_EQ(take_strings(qor_split(",a,", ",")), (Strings{"", "a", ""}));
  EXPECT_EQ(take_strings(qor_split("a<>b<>c", "<>")), (Strings{"a", "b", "c"}));
}

TEST(Split, WithoutOccurrenceGivesOnePiece) {
  EXPECT_EQ(take_strings(qor_split("abc", ",")), Strings{"abc"});
  EXPECT_EQ(take_strings(qor_split("abc", "")), Strings{"abc"});
  EXPECT_EQ(take_strings(qor_split("abc", nullptr)), Strings{"abc"});
  EXPECT_EQ(take_strings(qor_split("", ",")), Strings{""});
  EXPECT_EQ(take_strings(qor_split(nullptr, ",")), Strings{""});
}

TEST(Split, MakesAStringArray) {
  const auto pieces = kavo::test::own_deep(qor_split("a,b", ","));
  EXPECT_EQ(pieces->flags, QOR_FLAG_NESTED | QOR_FLAG_STRINGS);
  EXPECT_EQ(pieces->tags, nullptr);
}

TEST(Split, FindsASeparatorOfAnyLengthAtAnyPlace) {
  for (size_t length = 1; length <= 20; ++length)
    for (size_t place = 0; place <= 100; ++place) {
      const auto separator = "<" + std::string(length - 1, '-');
      // What surrounds it begins and ends as it does.
      const auto before = "-" + std::string(place, '<');
      const std::string after(100 - place, '\xAD');
      auto text = before;
      text.append(separator).append(after);
      EXPECT_EQ(take_strings(qor_split(text.c_str(), separator.c_str())),
                length == 1 ? pieces_by_loop(text, separator) : Strings({before, after}));
    }
}

TEST(Split, StaysLinearWhenEveryByteMisleads) {
  const std::string text(200000, 'a');
  const auto needle = std::string(50000, 'a') + "ba"; // by the plain loop 10^10 comparisons
  EXPECT_EQ(take_strings(qor_split(text.c_str(), needle.c_str())), Strings{text});
}

TEST(Split, MakesStringsThatEndWithFreeInAnyOrder) {
  std::string text;
  for (int i = 0; i < 1000; ++i)
    text += std::string(static_cast<size_t>(i % 300), 'x') + ",";
  auto expected = pieces_by_loop(text, ",");
  const auto pieces = kavo::test::own(qor_split(text.c_str(), ","));
  std::vector<size_t> order(expected.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::shuffle(order.begin(), order.end(), std::mt19937(3));
  for (const auto i : order) {
    auto* piece = static_cast<char*>(qor_array_get_ptr(pieces.get(), static_cast<int64_t>(i)));
    ASSERT_EQ(piece, expected[i]);
    std::free(piece);
  }
}

TEST(Split, MakesStringsThatOutliveTheirArray) {
  const auto pieces = kavo::test::own(qor_split("a,b,c", ","));
  const auto kept = kavo::test::own_deep(qor_array_reverse(pieces.get()));
  EXPECT_EQ(kavo::test::to_strings(kept.get()), (Strings{"c", "b", "a"}));
}

TEST(Split, MakesStringsThatTheHostMayKnowTheLengthOf) {
  const auto pieces = kavo::test::own_deep(qor_split("a,b,c", ","));
  qorrt_register_binary(qor_array_get_str(pieces.get(), 1), 1);
  EXPECT_EQ(kavo::fakes::registered_strings(), 1U);
  qor_str_free(static_cast<char*>(qor_array_get_ptr(pieces.get(), 1)));
  qor_array_set(pieces.get(), 1, 0.0);
  EXPECT_EQ(kavo::fakes::registered_strings(), 0U);
}

TEST(Join, PutsTheSeparatorBetweenStrings) {
  EXPECT_EQ(take(qor_join_arr(kavo::test::strings({"a", "", "c"}).get(), ", ")), "a, , c");
  EXPECT_EQ(take(qor_join_arr(kavo::test::strings({"a", "b"}).get(), nullptr)), "ab");
  EXPECT_EQ(take(qor_join_arr(kavo::test::strings({}).get(), ",")), "");
  EXPECT_EQ(take(qor_join_arr(nullptr, ",")), "");
}

TEST(Join, CountsANullStringAsEmpty) {
  const auto array = kavo::test::own(qor_array_new(2));
  qor_array_set_string_elems(array.get());
  EXPECT_EQ(take(qor_join_arr(array.get(), "-")), "-");
}

TEST(Join, WritesNumbersInSixSignificantDigits) {
  EXPECT_EQ(take(qor_join_arr(kavo::test::numbers({1, 2.5, 1e20, -0.0, 1234567}).get(), " ")),
            "1 2.5 1e+20 -0 1.23457e+06");
}

TEST(Join, GoesIntoRows) {
  EXPECT_EQ(take(qor_join_arr(kavo::test::rows({{1, 2}, {3}}).get(), ",")), "1,2,3");
}

TEST(Characters, AreSplitByTheirLeadBytes) {
  EXPECT_EQ(take_strings(qor_str_to_chars("aü€😀z")), (Strings{"a", "ü", "€", "😀", "z"}));
  EXPECT_EQ(take_strings(qor_str_to_chars(nullptr)), Strings{});
}

TEST(Characters, TakeAStrayContinuationByteAlone) {
  EXPECT_EQ(take_strings(qor_str_to_chars("\x80\xBFz")), (Strings{"\x80", "\xBF", "z"}));
}

TEST(Characters, AreCutShortAtTheEnd) {
  EXPECT_EQ(take_strings(qor_str_to_chars("a\xF0\x9F")), (Strings{"a", "\xF0\x9F"}));
}

std::string random_text(std::mt19937& random, size_t longest) {
  std::string text(random() % (longest + 1), ' ');
  for (char& c : text)
    c = static_cast<char>('a' + random() % 2);
  return text;
}

// A short text, or what stands anywhere in `text`.
std::string random_needle(std::mt19937& random, const std::string& text) {
  if (text.empty() || random() % 2 == 0)
    return random_text(random, 3);
  return text.substr(random() % text.size(), random() % 12);
}

TEST(PiecesProperty, SplitIsWhatTheStraightforwardLoopGives) {
  std::mt19937 random(1); // the same texts every time
  for (int i = kavo::test::rounds(5000); i > 0; --i) {
    const auto text = random_text(random, 150);
    const auto separator = random_needle(random, text);
    const auto pieces = kavo::test::own_deep(qor_split(text.c_str(), separator.c_str()));
    ASSERT_EQ(kavo::test::to_strings(pieces.get()),
              separator.empty() ? Strings{text} : pieces_by_loop(text, separator));
    ASSERT_EQ(take(qor_join_arr(pieces.get(), separator.c_str())), text);
  }
}

TEST(PiecesProperty, ReplaceIsWhatTheStraightforwardLoopGives) {
  std::mt19937 random(2); // the same texts every time
  for (int i = kavo::test::rounds(5000); i > 0; --i) {
    const auto text = random_text(random, 150);
    const auto find = random_needle(random, text);
    const auto with = random_text(random, 3);
    ASSERT_EQ(take(qor_replace(text.c_str(), find.c_str(), with.c_str())),
              replaced_by_loop(text, find, with));
  }
}

} // namespace
