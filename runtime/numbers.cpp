#include "runtime/numbers.h"

#include <algorithm>
#include <cmath>

#include "runtime/internal/numbers.h"

int64_t qor_int(double x) {
  return qor::truncate_to_int64(x);
}

int64_t qor_cint(double x) {
  return std::clamp<int64_t>(qor::truncate_to_int64(x), INT32_MIN, INT32_MAX);
}

double qor_csng(double x) {
  return static_cast<float>(x);
}

int qor_cbool(double x) {
  return x != 0.0 ? 1 : 0;
}

double qor_abs(double x) {
  return std::fabs(x);
}

double qor_sqr(double x) {
  return std::sqrt(x);
}

double qor_sin(double radians) {
  return std::sin(radians);
}

double qor_cos(double radians) {
  return std::cos(radians);
}

double qor_floor(double x) {
  return std::floor(x);
}

double qor_ceil(double x) {
  return std::ceil(x);
}

double qor_round(double x) {
  return std::round(x);
}

double qor_trunc(double x) {
  return std::trunc(x);
}

double qor_round_p(double x, int64_t places) {
  const double scale = std::pow(10.0, static_cast<double>(places));
  if (scale == 0.0)
    return 0.0;
  const double scaled = x * scale;
  return std::isfinite(scaled) ? std::round(scaled) / scale : x;
}
