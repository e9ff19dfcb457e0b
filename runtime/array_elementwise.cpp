// The mathematical functions over arrays.
#include <cmath>

#include "runtime/array_math.h"
#include "runtime/internal/elementwise.h"

using qor::mapped;

QorArray* qor_array_sin(const QorArray* array) {
  return mapped(array, [](double x) { return std::sin(x); });
}

QorArray* qor_array_cos(const QorArray* array) {
  return mapped(array, [](double x) { return std::cos(x); });
}

QorArray* qor_array_tan(const QorArray* array) {
  return mapped(array, [](double x) { return std::tan(x); });
}

QorArray* qor_array_asin(const QorArray* array) {
  return mapped(array, [](double x) { return std::asin(x); });
}

QorArray* qor_array_acos(const QorArray* array) {
  return mapped(array, [](double x) { return std::acos(x); });
}

QorArray* qor_array_atan(const QorArray* array) {
  return mapped(array, [](double x) { return std::atan(x); });
}

QorArray* qor_array_sinh(const QorArray* array) {
  return mapped(array, [](double x) { return std::sinh(x); });
}

QorArray* qor_array_cosh(const QorArray* array) {
  return mapped(array, [](double x) { return std::cosh(x); });
}

QorArray* qor_array_tanh(const QorArray* array) {
  return mapped(array, [](double x) { return std::tanh(x); });
}

QorArray* qor_array_exp(const QorArray* array) {
  return mapped(array, [](double x) { return std::exp(x); });
}

QorArray* qor_array_log(const QorArray* array) {
  return mapped(array, [](double x) { return std::log(x); });
}

QorArray* qor_array_log10(const QorArray* array) {
  return mapped(array, [](double x) { return std::log10(x); });
}

QorArray* qor_array_sqr(const QorArray* array) {
  return mapped(array, [](double x) { return std::sqrt(x); });
}

QorArray* qor_array_abs(const QorArray* array) {
  return mapped(array, [](double x) { return std::fabs(x); });
}

QorArray* qor_array_floor(const QorArray* array) {
  return mapped(array, [](double x) { return std::floor(x); });
}

QorArray* qor_array_ceil(const QorArray* array) {
  return mapped(array, [](double x) { return std::ceil(x); });
}

QorArray* qor_array_round(const QorArray* array) {
  return mapped(array, [](double x) { return std::round(x); });
}

QorArray* qor_array_trunc(const QorArray* array) {
  return mapped(array, [](double x) { return std::trunc(x); });
}
