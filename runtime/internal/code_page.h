// Code pages through the C library's tables.
#pragma once

#include "runtime/internal/utf.h"

namespace qor {

// `page` is the C library's name of the code page.
Converted decode_code_page(std::string_view bytes, const char* page);
Converted encode_code_page(std::string_view text, const char* page);

} // namespace qor
