#include "runtime/internal/code_page.h"

#include <iconv.h>

#include <cstdint>

namespace qor {
namespace {

class Converter {
public:
  Converter(const char* to, const char* from) : descriptor_(iconv_open(to, from)) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (is_open())
      iconv_close(descriptor_);
  }

  Converted convert(std::string_view input) {
    if (!is_open())
      return {};
    // No conversion between these encodings makes four bytes of one.
    std::string output(input.size() * 4, '\0');
    auto* in = const_cast<char*>(input.data()); // iconv reads it only
    auto* out = output.data();
    auto in_left = input.size();
    auto out_left = output.size();
    if (iconv(descriptor_, &in, &in_left, &out, &out_left) == failure)
      return {};
    output.resize(output.size() - out_left);
    return output;
  }

private:
  static constexpr auto failure = static_cast<size_t>(-1);

  bool is_open() const { return reinterpret_cast<intptr_t>(descriptor_) != -1; }

  iconv_t descriptor_;
};

} // namespace

Converted decode_code_page(std::string_view bytes, const char* page) {
  return Converter("UTF-8", page).convert(bytes);
}

// The C library also takes characters that a page does not hold but that look like one it does
// (U+00A5 for the backslash of 932). Reading the bytes back tells them from the table's own.
Converted encode_code_page(std::string_view text, const char* page) {
  auto bytes = Converter(page, "UTF-8").convert(text);
  const bool is_exact = bytes && decode_code_page(*bytes, page) == text;
  return is_exact ? bytes : std::nullopt;
}

} // namespace qor
