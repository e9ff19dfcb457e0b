// Encodings: names, code pages by their published tables, UTF-8 and UTF-16.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

#include "runtime/digest.h"
#include "runtime/encoding.h"
#include "tests/runtime/values.h"

namespace {

using namespace std::string_literals;
using qor_enc::decode_to_utf8;
using qor_enc::encode_from_utf8;

bool decodes(std::string_view bytes, std::string_view encoding) {
  bool ok = false;
  decode_to_utf8(bytes, encoding, &ok);
  return ok;
}

bool encodes(std::string_view text, std::string_view encoding) {
  bool ok = false;
  encode_from_utf8(text, encoding, &ok);
  return ok;
}

TEST(EncodingNames, DoNotDependOnCaseDashAndUnderscore) {
  for (const auto* name : {"utf8", "UTF-8", "utf_8", "U_T-F8"})
    EXPECT_EQ(decode_to_utf8("grün", name), "grün") << name;
}

TEST(EncodingNames, OfOneEncodingMeanTheSame) {
  struct Group {
    std::vector<std::string> names;
    std::string bytes;
    std::string text;
  };
  const std::vector<Group> groups{
      {{"utf8"}, "\xC3\xBC", "ü"},
      {{"ascii", "usascii"}, "u", "u"},
      {{"iso88591", "latin1", "ISO-8859-1"}, "\xFC\x80", "ü\u0080"},
      {{"cp1252", "windows1252", "1252"}, "\xFC\x80", "ü€"},
      {{"cp1250", "windows1250", "1250"}, "\xEC", "ě"},
      {{"cp1251", "windows1251", "1251"}, "\xDF", "Я"},
      {{"cp850", "ibm850", "850"}, "\x81\xD5", "üı"},
      {{"cp437", "ibm437", "437"}, "\x81\xE1\xE6", "üßµ"},
      {{"cp936", "gb2312", "936"}, "\xC4\xE3\x80", "你€"},
      {{"cp932", "shiftjis", "932", "Shift_JIS"}, "\x82\xA0\xB1\x5C", "あｱ\\"},
      {{"utf16le", "ucs2le"}, "\xFC\0"s, "ü"},
      {{"utf16be", "ucs2be"}, "\0\xFC"s, "ü"},
  };
  for (const auto& group : groups)
    for (const auto& name : group.names) {
      EXPECT_EQ(decode_to_utf8(group.bytes, name), group.text) << name;
      EXPECT_EQ(encode_from_utf8(group.text, name), group.bytes) << name;
    }
}

TEST(EncodingNames, ThatAreUnknownFail) {
  EXPECT_FALSE(decodes("abc", "klingon"));
  EXPECT_FALSE(encodes("abc", "klingon"));
  EXPECT_EQ(decode_to_utf8("abc", "klingon"), "");
}

TEST(EmptyEncodingName, PassesAsciiAndUtf8Through) {
  EXPECT_EQ(decode_to_utf8("plain", ""), "plain");
  EXPECT_EQ(decode_to_utf8("grün", ""), "grün");
  EXPECT_EQ(encode_from_utf8("grün", ""), "grün");
  EXPECT_FALSE(decodes("gr\xFCn", ""));
}

TEST(EmptyEncodingName, FollowsAByteOrderMark) {
  EXPECT_EQ(decode_to_utf8("\xEF\xBB\xBFgrün", ""), "grün");
  EXPECT_EQ(decode_to_utf8("\xFF\xFE\xFC\0"s, ""), "ü");
  EXPECT_EQ(decode_to_utf8("\xFE\xFF\0\xFC"s, ""), "ü");
}

struct CodePage {
  const char* name;
  int characters;
  const char* digest;
};

// Number of characters and SHA-256 of the table written as lines "bytes code-point\n" in
// hexadecimal, by bytes. Computed from another implementation's tables of the published pages.
class PublishedTable : public testing::TestWithParam<CodePage> {};

template<typename Take>
void for_each_character(const char* page, Take take) {
  const auto try_bytes = [&](const std::string& bytes) {
    const auto text = decode_to_utf8(bytes, page);
    if (!text.empty())
      take(bytes, text);
    return !text.empty();
  };
  for (int first = 0; first < 256; ++first) {
    const std::string one(1, static_cast<char>(first));
    if (try_bytes(one) || first < 0x80)
      continue;
    for (int second = 0; second < 256; ++second)
      try_bytes(one + static_cast<char>(second));
  }
}

uint32_t code_point_of(const std::string& text) {
  const auto units = qor_enc::utf8_to_utf16(text, true);
  return static_cast<uint32_t>(static_cast<unsigned char>(units[0])) << 8 |
         static_cast<unsigned char>(units[1]);
}

TEST_P(PublishedTable, IsDecodedToTheLetter) {
  std::string table;
  int characters = 0;
  for_each_character(GetParam().name, [&](const std::string& bytes, const std::string& text) {
    for (const char byte : bytes) {
      std::array<char, 3> digits{};
      std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned char>(byte));
      table += digits.data();
    }
    std::array<char, 8> digits{};
    std::snprintf(digits.data(), digits.size(), " %04x\n", code_point_of(text));
    table += digits.data();
    characters += 1;
  });
  EXPECT_EQ(characters, GetParam().characters);
  EXPECT_EQ(kavo::test::take(qor_sha256(table.c_str())), GetParam().digest);
}

TEST_P(PublishedTable, HoldsEveryCharacterItEncodes) {
  for_each_character(GetParam().name, [](const std::string& /*bytes*/, const std::string& text) {
    ASSERT_EQ(decode_to_utf8(encode_from_utf8(text, GetParam().name), GetParam().name), text);
  });
}

TEST_P(PublishedTable, EncodesNothingThatItDoesNotHold) {
  EXPECT_FALSE(encodes("\U0001F600", GetParam().name));
  EXPECT_FALSE(encodes("\u0E01", GetParam().name)) << "Thai";
  EXPECT_FALSE(encodes("\xFF", GetParam().name)) << "no UTF-8";
}

INSTANTIATE_TEST_SUITE_P(
    AllPages, PublishedTable,
    testing::Values(
        CodePage{"cp1252", 251, "403888d2190e11b23e43a74bc14906e254d1262460b606feca8de5b828002cdb"},
        CodePage{"cp1250", 251, "3ee0001d4070311f4a71b8b08c2d186c5ed2495524e58fbcf0d4e22f2993c676"},
        CodePage{"cp1251", 255, "74a5ceb4f2e1acd54ac132b386d50f577f587fc5614e2dbc139db92864c41a0f"},
        CodePage{"cp850", 256, "d3b5721626e5a62e597cc9098b07bf8914410ae34aa9041f9b7cbb078e2bf4bf"},
        CodePage{"cp437", 256, "88bc34760cda4e000b609688433819dc8c30d5d58f4e990749f0abd6905cd84a"},
        CodePage{"cp936", 21920,
                 "8964237a30b6b6591e66d675d511f0d280651fcf64bd509b79ef53d908bb6f48"},
        CodePage{"cp932", 9795,
                 "474610a699a57445e36b05350c76b90d77a9d98c476b3cdf037f091735c259f6"}),
    [](const auto& page) { return std::string(page.param.name); });

TEST(CodePages, FailOnUndefinedBytes) {
  EXPECT_FALSE(decodes("a\x81", "1252"));
  EXPECT_FALSE(decodes("\x98", "1251"));
  EXPECT_FALSE(decodes("\x82", "932")) << "a lead byte alone";
}

TEST(CodePages, FailOnCharactersThatOnlyLookAlike) {
  EXPECT_FALSE(encodes("¥", "932"));
  EXPECT_FALSE(encodes("‾", "932"));
  EXPECT_FALSE(encodes("−", "932"));
}

TEST(Ascii, EndsAt7F) {
  EXPECT_EQ(decode_to_utf8("\x7F", "ascii"), "\x7F");
  EXPECT_FALSE(decodes("\x80", "ascii"));
  EXPECT_FALSE(encodes("\u0080", "ascii"));
}

TEST(Latin1, HoldsEveryByte) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    all += static_cast<char>(byte);
  EXPECT_EQ(encode_from_utf8(decode_to_utf8(all, "latin1"), "latin1"), all);
  EXPECT_FALSE(encodes("Ā", "latin1"));
}

TEST(Utf8, RefusesWhatIsNotUtf8) {
  for (const auto* bytes :
       {"\x80", "\xC3", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
        "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF", "\xE2\x28\xA1", "\xE2\x82"})
    EXPECT_FALSE(decodes(bytes, "utf8")) << testing::PrintToString(bytes);
}

TEST(Utf8, DropsAMarkInFront) {
  EXPECT_EQ(decode_to_utf8("\xEF\xBB\xBFx", "utf8"), "x");
}

TEST(Utf16, FollowsAMarkWhateverTheNameSays) {
  for (const auto* name : {"utf16", "utf16le", "utf16be", "ucs2", "unicode", "ucs2le", "ucs2be"}) {
    EXPECT_EQ(decode_to_utf8("\xFF\xFE\x41\0"s, name), "A") << name;
    EXPECT_EQ(decode_to_utf8("\xFE\xFF\0\x41"s, name), "A") << name;
  }
}

TEST(Utf16, WithoutAMarkIsLittleEndian) {
  for (const auto* name : {"utf16", "ucs2", "unicode"})
    EXPECT_EQ(decode_to_utf8("\x41\0"s, name), "A") << name;
}

TEST(Utf16, IsWrittenWithAMarkUnlessTheNameFixesTheOrder) {
  EXPECT_EQ(encode_from_utf8("A", "utf16"), "\xFF\xFE\x41\0"s);
  EXPECT_EQ(encode_from_utf8("A", "utf16le"), "\x41\0"s);
  EXPECT_EQ(encode_from_utf8("A", "utf16be"), "\0\x41"s);
}

TEST(Utf16, PairsSurrogates) {
  EXPECT_EQ(qor_enc::utf8_to_utf16("😀", true), "\xD8\x3D\xDE\x00"s);
  EXPECT_EQ(qor_enc::utf16_to_utf8("\x3D\xD8\x00\xDE"s, false), "😀");
}

TEST(Utf16, RefusesHalfPairsAndHalfUnits) {
  for (const auto& bytes :
       {"\x41"s, "\x3D\xD8"s, "\x3D\xD8\x41\0"s, "\x00\xDE"s, "\x3D\xD8\x3D\xD8"s}) {
    bool ok = true;
    EXPECT_EQ(qor_enc::utf16_to_utf8(bytes, false, &ok), "");
    EXPECT_FALSE(ok) << testing::PrintToString(bytes);
  }
}

TEST(Utf16, HoldsEveryCodePoint) {
  std::string text;
  for (uint32_t value = 1; value < 0x110000; ++value)
    if (value < 0xD800 || value >= 0xE000)
      qor_enc::utf8_append_cp(text, value);
  for (const auto* name : {"utf16", "utf16le", "utf16be", "utf8"})
    EXPECT_TRUE(decode_to_utf8(encode_from_utf8(text, name), name) == text) << name;
}

TEST(AppendCodePoint, WritesOneToFourBytes) {
  std::string text;
  for (const uint32_t value : {0x41U, 0xFCU, 0x20ACU, 0x1F600U})
    qor_enc::utf8_append_cp(text, value);
  EXPECT_EQ(text, "Aü€😀");
}

TEST(AppendCodePoint, ReplacesWhatIsNoCodePoint) {
  std::string text;
  for (const uint32_t value : {0xD800U, 0xDFFFU, 0x110000U})
    qor_enc::utf8_append_cp(text, value);
  EXPECT_EQ(text, "\uFFFD\uFFFD\uFFFD");
}

} // namespace
