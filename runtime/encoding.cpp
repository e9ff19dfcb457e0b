#include "runtime/encoding.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "runtime/internal/code_page.h"
#include "runtime/internal/utf.h"

namespace {

using qor::Converted;

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
constexpr std::string_view little_endian_mark = "\xFF\xFE";
constexpr std::string_view big_endian_mark = "\xFE\xFF";
constexpr uint32_t ascii_limit = 0x80;
constexpr uint32_t latin1_limit = 0x100;

enum class Form { by_mark, utf8, ascii, latin1, code_page, utf16_little, utf16_big, utf16_marked };

struct Encoding {
  std::string_view name;
  Form form;
  const char* page = nullptr;
};

constexpr std::array encodings{
    Encoding{"", Form::by_mark},
    Encoding{"utf8", Form::utf8},
    Encoding{"ascii", Form::ascii},
    Encoding{"usascii", Form::ascii},
    Encoding{"iso88591", Form::latin1},
    Encoding{"latin1", Form::latin1},
    Encoding{"cp1252", Form::code_page, "CP1252"},
    Encoding{"windows1252", Form::code_page, "CP1252"},
    Encoding{"1252", Form::code_page, "CP1252"},
    Encoding{"cp1250", Form::code_page, "CP1250"},
    Encoding{"windows1250", Form::code_page, "CP1250"},
    Encoding{"1250", Form::code_page, "CP1250"},
    Encoding{"cp1251", Form::code_page, "CP1251"},
    Encoding{"windows1251", Form::code_page, "CP1251"},
    Encoding{"1251", Form::code_page, "CP1251"},
    Encoding{"cp850", Form::code_page, "CP850"},
    Encoding{"ibm850", Form::code_page, "CP850"},
    Encoding{"850", Form::code_page, "CP850"},
    Encoding{"cp437", Form::code_page, "CP437"},
    Encoding{"ibm437", Form::code_page, "CP437"},
    Encoding{"437", Form::code_page, "CP437"},
    Encoding{"cp936", Form::code_page, "CP936"},
    Encoding{"gb2312", Form::code_page, "CP936"},
    Encoding{"936", Form::code_page, "CP936"},
    Encoding{"cp932", Form::code_page, "CP932"},
    Encoding{"shiftjis", Form::code_page, "CP932"},
    Encoding{"932", Form::code_page, "CP932"},
    Encoding{"utf16le", Form::utf16_little},
    Encoding{"ucs2le", Form::utf16_little},
    Encoding{"utf16be", Form::utf16_big},
    Encoding{"ucs2be", Form::utf16_big},
    Encoding{"utf16", Form::utf16_marked},
    Encoding{"ucs2", Form::utf16_marked},
    Encoding{"unicode", Form::utf16_marked},
};

std::string normalised(std::string_view name) {
  std::string result;
  std::ranges::copy_if(name, std::back_inserter(result),
                       [](char c) { return c != '-' && c != '_'; });
  std::ranges::transform(result, result.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return result;
}

const Encoding* find_encoding(std::string_view name) {
  const auto* found = std::ranges::find(encodings, normalised(name), &Encoding::name);
  return found == encodings.end() ? nullptr : found;
}

Converted decode_utf8(std::string_view bytes) {
  if (bytes.starts_with(utf8_mark))
    bytes.remove_prefix(utf8_mark.size());
  return qor::is_utf8(bytes) ? Converted(bytes) : std::nullopt;
}

bool has_utf16_mark(std::string_view bytes) {
  return bytes.starts_with(little_endian_mark) || bytes.starts_with(big_endian_mark);
}

Converted decode_utf16(std::string_view bytes, bool is_big_endian) {
  if (!has_utf16_mark(bytes))
    return qor::decode_utf16(bytes, is_big_endian);
  return qor::decode_utf16(bytes.substr(2), bytes.starts_with(big_endian_mark));
}

Converted decode(std::string_view bytes, const Encoding& encoding) {
  switch (encoding.form) {
  case Form::by_mark:
    return has_utf16_mark(bytes) ? decode_utf16(bytes, false) : decode_utf8(bytes);
  case Form::utf8:
    return decode_utf8(bytes);
  case Form::ascii:
    return qor::decode_bytes(bytes, ascii_limit);
  case Form::latin1:
    return qor::decode_bytes(bytes, latin1_limit);
  case Form::code_page:
    return qor::decode_code_page(bytes, encoding.page);
  case Form::utf16_little:
  case Form::utf16_marked:
    return decode_utf16(bytes, false);
  case Form::utf16_big:
    return decode_utf16(bytes, true);
  }
  return {};
}

Converted encode(std::string_view text, const Encoding& encoding) {
  switch (encoding.form) {
  case Form::by_mark:
  case Form::utf8:
    return qor::is_utf8(text) ? Converted(text) : std::nullopt;
  case Form::ascii:
    return qor::encode_bytes(text, ascii_limit);
  case Form::latin1:
    return qor::encode_bytes(text, latin1_limit);
  case Form::code_page:
    return qor::encode_code_page(text, encoding.page);
  case Form::utf16_little:
    return qor::encode_utf16(text, false);
  case Form::utf16_big:
    return qor::encode_utf16(text, true);
  case Form::utf16_marked:
    return qor::encode_utf16("\uFEFF" + std::string(text), false);
  }
  return {};
}

std::string result_of(Converted converted, bool* ok) {
  if (ok != nullptr)
    *ok = converted.has_value();
  return std::move(converted).value_or("");
}

} // namespace

std::string qor_enc::decode_to_utf8(std::string_view bytes, std::string_view encoding, bool* ok) {
  const auto* found = find_encoding(encoding);
  return result_of(found == nullptr ? std::nullopt : decode(bytes, *found), ok);
}

std::string qor_enc::encode_from_utf8(std::string_view text, std::string_view encoding, bool* ok) {
  const auto* found = find_encoding(encoding);
  return result_of(found == nullptr ? std::nullopt : encode(text, *found), ok);
}

std::string qor_enc::utf16_to_utf8(std::string_view data, bool big_endian, bool* ok) {
  return result_of(qor::decode_utf16(data, big_endian), ok);
}

std::string qor_enc::utf8_to_utf16(std::string_view text, bool big_endian, bool* ok) {
  return result_of(qor::encode_utf16(text, big_endian), ok);
}
