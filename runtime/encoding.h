// Text between UTF-8, which is what text inside the program is, and the encodings of files. C++
// only.
//
// Names of encodings: case, '-' and '_' do not count. Known are utf8; ascii, usascii; iso88591,
// latin1; cp1252, windows1252, 1252, and likewise 1250 and 1251; cp850, ibm850, 850 and likewise
// 437; cp936, gb2312, 936; cp932, shiftjis, 932; utf16le, ucs2le; utf16be, ucs2be; utf16, ucs2,
// unicode. The empty name stands for UTF-8 or, on decoding, for what a byte-order mark says. The
// code pages are the C library's own; a machine that lacks one fails to convert.
//
// A conversion fails as a whole: when the name is unknown, when the input is not of its encoding
// (a lone surrogate, an overlong sequence, an undefined byte), or when a character has no place in
// the target. It then returns "" and sets `*ok` (which may be null) to false.
#pragma once

#ifdef __cplusplus

#include <cstdint>
#include <string>
#include <string_view>

namespace qor_enc {

// UTF-8 for bytes of `encoding`. A byte-order mark is dropped; in every UTF-16 form it decides the
// order. Without one, utf16, ucs2 and unicode are little-endian.
std::string decode_to_utf8(std::string_view bytes, std::string_view encoding, bool* ok = nullptr);

// Bytes of `encoding` for UTF-8. utf16, ucs2 and unicode give little-endian behind a byte-order
// mark; no other encoding writes one.
std::string encode_from_utf8(std::string_view text, std::string_view encoding, bool* ok = nullptr);

// The same between UTF-8 and UTF-16 of a known order; byte-order marks are ordinary characters.
std::string utf16_to_utf8(std::string_view data, bool big_endian, bool* ok = nullptr);
std::string utf8_to_utf16(std::string_view text, bool big_endian, bool* ok = nullptr);

// Appends one code point; what is none (a surrogate, above 0x10FFFF) becomes U+FFFD.
void utf8_append_cp(std::string& text, uint32_t code_point);

} // namespace qor_enc

#endif
