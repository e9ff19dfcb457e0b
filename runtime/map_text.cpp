// A map as text.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "runtime/internal/containers.h"
#include "runtime/internal/numbers_to_text.h"
#include "runtime/internal/strings.h"
#include "runtime/map.h"
#include "runtime/system.h"

namespace {

void append_escaped(qor::String& out, char c) {
  constexpr std::string_view letters = "\b\f\n\r\t";
  constexpr std::string_view names = "bfnrt";
  const auto letter = letters.find(c);
  if (c == '"' || c == '\\') {
    out += {'\\', c};
  } else if (letter != std::string_view::npos) {
    out += {'\\', names[letter]};
  } else if (static_cast<unsigned char>(c) < 0x20) {
    std::array<char, 8> code{};
    std::snprintf(code.data(), code.size(), "\\u%04x", static_cast<unsigned>(c));
    out += code.data();
  } else {
    out += c;
  }
}

void append_quoted(qor::String& out, std::string_view text) {
  out += '"';
  for (const char c : text)
    append_escaped(out, c);
  out += '"';
}

void append_tag_name(qor::String& out, uint32_t tag) {
  auto* name = qor_typeof_tag(tag);
  out += name;
  std::free(name);
}

void append_value(qor::String& out, const QorMap& map, int64_t index) {
  qor::NumberBuffer buffer;
  const auto& value = map.values[index];
  switch (map.tags[index]) {
  case QOR_TAG_STRING:
    append_quoted(out, qor::bytes_of(value.str));
    break;
  case QOR_TAG_INT64:
    out += qor::write_integer(buffer, value.i64);
    break;
  case QOR_TAG_FLOAT64:
    out += qor::write_general(buffer, value.f64);
    break;
  default:
    append_tag_name(out, map.tags[index]);
  }
}

} // namespace

char* qor_map_str(const QorMap* map) {
  qor::String text = "{";
  for (int64_t i = 0; map != nullptr && i < map->count; ++i) {
    text += i == 0 ? "" : ", ";
    append_quoted(text, map->keys[i]);
    text += ": ";
    append_value(text, *map, i);
  }
  return qor::new_string(text + "}");
}
