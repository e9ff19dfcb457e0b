#include "runtime/system.h"

#include <unistd.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <string_view>

#include "runtime/internal/containers.h"
#include "runtime/internal/strings.h"
#include "runtime/text.h"
#include "runtime/value.h"

namespace {

constexpr double draws = static_cast<double>(RAND_MAX) + 1.0;

unsigned draw() {
  return static_cast<unsigned>(std::rand());
}

uint64_t magnitude(int64_t value) {
  const auto bits = static_cast<uint64_t>(value);
  return value < 0 ? 0 - bits : bits;
}

int64_t saturated(uint64_t value) {
  return value > uint64_t{INT64_MAX} ? INT64_MAX : static_cast<int64_t>(value);
}

std::string_view tag_name(uint32_t tag) {
  switch (tag) {
  case QOR_TAG_INT64:
    return "INT64";
  case QOR_TAG_FLOAT64:
    return "FLOAT64";
  case QOR_TAG_STRING:
    return "STRING";
  case QOR_TAG_ARRAY:
    return "ARRAY";
  case QOR_TAG_OBJECT:
  case QOR_TAG_HOST:
    return "OBJECT";
  case QOR_TAG_FUNCREF:
    return "FUNCREF";
  default:
    return "UNKNOWN";
  }
}

} // namespace

void qor_randomseed(int64_t seed) {
  std::srand(static_cast<unsigned>(seed));
}

double qor_rnd() {
  return draw() / draws;
}

double qor_random2() {
  const auto high = static_cast<uint64_t>(draw()) << 22;
  const auto low = static_cast<uint64_t>(draw()) >> 9;
  return static_cast<double>(high | low) * 0x1p-53;
}

char* qor_uuid() {
  std::array<unsigned, 8> groups{};
  for (auto& group : groups)
    group = draw() & 0xFFFF;
  const unsigned version = (groups[3] & 0xFFF) | 0x4000;
  const unsigned variant = (groups[4] & 0x3FFF) | 0x8000;
  std::array<char, 37> text{};
  std::snprintf(text.data(), text.size(), "%04x%04x-%04x-%04x-%04x-%04x%04x%04x", groups[0],
                groups[1], groups[2], version, variant, groups[5], groups[6], groups[7]);
  return qor::new_string(text.data());
}

uint64_t qor_rotl(uint64_t value, int64_t count) {
  return std::rotl(value, static_cast<int>(count & 63));
}

uint64_t qor_rotr(uint64_t value, int64_t count) {
  return std::rotr(value, static_cast<int>(count & 63));
}

uint64_t qor_rotl2(uint64_t value, int64_t count) {
  return std::rotl(static_cast<uint32_t>(value), static_cast<int>(count & 31));
}

uint64_t qor_rotr2(uint64_t value, int64_t count) {
  return std::rotr(static_cast<uint32_t>(value), static_cast<int>(count & 31));
}

int64_t qor_gcd(int64_t a, int64_t b) {
  return saturated(std::gcd(magnitude(a), magnitude(b)));
}

int64_t qor_lcm(int64_t a, int64_t b) {
  if (a == 0 || b == 0)
    return 0;
  const auto divisor = std::gcd(magnitude(a), magnitude(b));
  uint64_t multiple = 0;
  const bool is_too_large = __builtin_mul_overflow(magnitude(a) / divisor, magnitude(b), &multiple);
  return is_too_large ? INT64_MAX : saturated(multiple);
}

double qor_iif(int64_t condition, double a, double b) {
  return condition != 0 ? a : b;
}

char* qor_typeof_tag(uint32_t tag) {
  return qor::new_string(tag_name(tag));
}

char* qor_typeof_f64(double x) {
  return qor::new_string(std::isnan(x) ? "NONE" : "FLOAT64");
}

int qor_isnum(double /*value*/) {
  return 1;
}

int qor_isstr(const char* /*value*/) {
  return 1;
}

char* qor_os_getos() {
  return qor::new_string("MACOS");
}

char* qor_os_hostname() {
  std::array<char, 256> name{};
  const bool is_known = gethostname(name.data(), name.size() - 1) == 0;
  return qor::new_string(is_known ? name.data() : "");
}

int qor_os_feature(const char* name) {
  constexpr size_t longest_name = 63;
  const qor::String known(qor::text_of(name).substr(0, longest_name));
  auto* upper = qor_upper(known.c_str());
  const std::string_view feature(upper);
  const bool is_there = feature == "NATIVEC" || feature == "LLVMC";
  qor_str_free(upper);
  return is_there ? 1 : 0;
}
