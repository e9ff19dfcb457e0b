// Characters: which glyph, where, and what stands for bytes that are none.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "host/screen/canvas.h"
#include "host/screen/font.h"
#include "tests/host/picture.h"

namespace {

using kavo::host::Canvas;
using kavo::host::glyph_rows;
using kavo::host::next_code_point;
using kavo::test::part_of;
using kavo::test::Picture;

std::u32string decoded(std::string_view utf8) {
  std::u32string text;
  while (!utf8.empty())
    text += next_code_point(utf8);
  return text;
}

std::vector<uint8_t> rows_of(char32_t code_point) {
  const uint8_t* rows = glyph_rows(code_point);
  return {rows, rows + Canvas::cell_height};
}

const std::vector<uint8_t> replacement_box = rows_of(0xFFFD);

Canvas with_text(std::string_view text, int x = 0, int y = 0) {
  Canvas canvas(32, 16);
  canvas.text(x, y, text);
  return canvas;
}

TEST(Font, DrawsALetterInItsCell) {
  EXPECT_EQ(part_of(with_text("A"), 0, 0, 8, 16),
            (Picture{"........", "........", ".#####..", "##...##.", "##...##.", "##...##.",
                     "##...##.", "#######.", "##...##.", "##...##.", "##...##.", "##...##.",
                     "........", "........", "........", "........"}));
}

TEST(Font, HasEveryPrintableCharacterOfLatin1) {
  for (char32_t code_point = 0x21; code_point <= 0xFF; ++code_point) {
    if (code_point >= 0x7F && code_point <= 0xA0)
      continue;
    EXPECT_NE(rows_of(code_point), replacement_box) << static_cast<int>(code_point);
  }
}

TEST(Font, ShowsWhatItLacksAsAVisibleBox) {
  EXPECT_TRUE(std::any_of(replacement_box.begin(), replacement_box.end(),
                          [](uint8_t row) { return row != 0; }));
  EXPECT_EQ(rows_of(0x1F600), replacement_box);
  EXPECT_EQ(rows_of('\n'), replacement_box);
  EXPECT_EQ(rows_of(0x10FFFF), replacement_box);
}

TEST(Font, SpaceIsEmpty) {
  EXPECT_EQ(rows_of(' '), std::vector<uint8_t>(16, 0));
}

TEST(Utf8, ReadsOneToFourBytes) {
  EXPECT_EQ(decoded("aä€😀"), U"aä€😀");
}

// As UTF-8 is defined: RFC 3629, section 3.
std::string encoded(char32_t code_point) {
  const auto byte = [](char32_t bits) { return static_cast<char>(bits); };
  const auto tail = [&](unsigned shift) { return byte(0x80U | ((code_point >> shift) & 0x3FU)); };
  if (code_point < 0x80)
    return {byte(code_point)};
  if (code_point < 0x800)
    return {byte(0xC0U | (code_point >> 6U)), tail(0)};
  if (code_point < 0x10000)
    return {byte(0xE0U | (code_point >> 12U)), tail(6), tail(0)};
  return {byte(0xF0U | (code_point >> 18U)), tail(12), tail(6), tail(0)};
}

TEST(Utf8, ReadsEveryCharacterOfUnicode) {
  for (char32_t code_point = 0; code_point <= 0x10FFFF; ++code_point) {
    if (code_point == 0xD800)
      code_point = 0xE000;
    const std::string text = encoded(code_point);
    std::string_view rest = text;
    ASSERT_EQ(next_code_point(rest), code_point);
    ASSERT_TRUE(rest.empty()) << static_cast<unsigned>(code_point);
  }
}

TEST(Utf8, RefusesTheLastOverlongFormOfEachLengthAndEveryLeadThatIsNone) {
  for (const char* bytes : {"\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xBF\xBF"}) {
    std::string_view rest = bytes;
    EXPECT_EQ(next_code_point(rest), 0xFFFDU) << bytes;
    EXPECT_EQ(rest.size(), std::string_view(bytes).size() - 1);
  }
  for (unsigned lead = 0xF5; lead <= 0xFF; ++lead)
    EXPECT_EQ(decoded(std::string(1, static_cast<char>(lead)) + "\x80\x80\x80"),
              U"\uFFFD\uFFFD\uFFFD\uFFFD")
        << lead;
}

TEST(Utf8, EachInvalidByteIsOneReplacement) {
  EXPECT_EQ(decoded("\xFF"), U"\uFFFD");
  EXPECT_EQ(decoded("a\x80z"), U"a\uFFFDz");
  EXPECT_EQ(decoded("\xC3"), U"\uFFFD");
  EXPECT_EQ(decoded("\xC3("), U"\uFFFD(");
  EXPECT_EQ(decoded("\xE2\x82"), U"\uFFFD\uFFFD");
}

TEST(Utf8, RefusesOverlongFormsSurrogatesAndWhatLiesBeyondUnicode) {
  EXPECT_EQ(decoded("\xC0\xAF"), U"\uFFFD\uFFFD");
  EXPECT_EQ(decoded("\xE0\x80\xAF"), U"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(decoded("\xED\xA0\x80"), U"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(decoded("\xF4\x90\x80\x80"), U"\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(Text, AdvancesEightPixelsACharacter) {
  const Canvas canvas = with_text("AA");
  EXPECT_EQ(part_of(canvas, 0, 0, 8, 16), part_of(canvas, 8, 0, 8, 16));
}

TEST(Text, AnUmlautIsOneCharacter) {
  const Canvas canvas = with_text("äA");
  EXPECT_EQ(part_of(canvas, 8, 0, 8, 16), part_of(with_text("A"), 0, 0, 8, 16));
}

TEST(Text, HasNoBackground) {
  Canvas canvas(8, 16);
  canvas.set_colour(0x00112233);
  canvas.fill_rectangle(0, 0, 8, 16);
  canvas.set_colour(0x00FFFFFF);
  canvas.text(0, 0, "A");
  EXPECT_EQ(canvas.row(0)[0], 0x00112233U);
  EXPECT_EQ(canvas.row(2)[1], 0x00FFFFFFU);
}

TEST(Text, IsClippedPixelByPixel) {
  const Canvas whole = with_text("A");
  EXPECT_EQ(part_of(with_text("A", -3, -4), 0, 0, 5, 12), part_of(whole, 3, 4, 5, 12));
  EXPECT_EQ(part_of(with_text("A", 28, 10), 28, 10, 4, 6), part_of(whole, 0, 0, 4, 6));
}

TEST(Text, FarOutsideDrawsNothing) {
  for (const int away : {-1'000'000'000, 1'000'000'000, 32, -16})
    EXPECT_TRUE(kavo::test::is_black(with_text("AB", away, 0))) << away;
  for (const int away : {-1'000'000'000, 1'000'000'000, 16, -16})
    EXPECT_TRUE(kavo::test::is_black(with_text("AB", 0, away))) << away;
}

TEST(Text, OfNothingDrawsNothing) {
  EXPECT_TRUE(kavo::test::is_black(with_text("")));
}

} // namespace
