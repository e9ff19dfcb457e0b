#include "runtime/array_math.h"

#include <algorithm>
#include <cmath>

#include "runtime/array.h"
#include "runtime/internal/elementwise.h"
#include "runtime/internal/numbers.h"
#include "runtime/text.h"

namespace {

double divided(double a, double b) {
  const double divisor = b == 0.0 ? 1.0 : b; // divides always, so that the loop needs no branch
  const double quotient = a / divisor;
  return b == 0.0 ? 0.0 : quotient;
}

int64_t shifted_left(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) << (b & 63));
}

// INT64_MIN % -1 has no representable quotient, so -1 is answered without dividing.
int64_t remainder_of(int64_t a, int64_t b) {
  return b == 0 || b == -1 ? 0 : a % b;
}

template<typename Operation>
auto on_integers(Operation operation) {
  return [operation](double a, double b) {
    return static_cast<double>(operation(qor::truncate_to_int64(a), qor::truncate_to_int64(b)));
  };
}

auto arithmetic(int64_t code) {
  return [code](auto use) {
    switch (code) {
    case QOR_OP_ADD:
      return use([](double a, double b) { return a + b; });
    case QOR_OP_SUBTRACT:
      return use([](double a, double b) { return a - b; });
    case QOR_OP_MULTIPLY:
      return use([](double a, double b) { return a * b; });
    case QOR_OP_DIVIDE:
      return use([](double a, double b) { return divided(a, b); });
    case QOR_OP_AND:
      return use(on_integers([](int64_t a, int64_t b) { return a & b; }));
    case QOR_OP_OR:
      return use(on_integers([](int64_t a, int64_t b) { return a | b; }));
    case QOR_OP_XOR:
      return use(on_integers([](int64_t a, int64_t b) { return a ^ b; }));
    case QOR_OP_SHIFT_LEFT:
      return use(on_integers(shifted_left));
    case QOR_OP_SHIFT_RIGHT:
      return use(on_integers([](int64_t a, int64_t b) { return a >> (b & 63); }));
    case QOR_OP_REMAINDER:
      return use(on_integers(remainder_of));
    case QOR_OP_POWER:
      return use([](double a, double b) { return std::pow(a, b); });
    default:
      return use([](double, double) { return 0.0; });
    }
  };
}

auto comparison(int64_t code) {
  const auto flag = [](bool holds) { return holds ? 1.0 : 0.0; };
  return [code, flag](auto use) {
    switch (code) {
    case QOR_CMP_EQUAL:
      return use([flag](double a, double b) { return flag(a == b); });
    case QOR_CMP_NOT_EQUAL:
      return use([flag](double a, double b) { return flag(a != b); });
    case QOR_CMP_BOTH:
      return use([flag](double a, double b) { return flag((a != 0.0) & (b != 0.0)); });
    case QOR_CMP_EITHER:
      return use([flag](double a, double b) { return flag((a != 0.0) | (b != 0.0)); });
    case QOR_CMP_LESS:
      return use([flag](double a, double b) { return flag(a < b); });
    case QOR_CMP_LESS_OR_EQUAL:
      return use([flag](double a, double b) { return flag(a <= b); });
    case QOR_CMP_GREATER:
      return use([flag](double a, double b) { return flag(a > b); });
    case QOR_CMP_GREATER_OR_EQUAL:
      return use([flag](double a, double b) { return flag(a >= b); });
    default:
      return use([](double, double) { return 0.0; });
    }
  };
}

// Strings are compared through their order, which stands on one side of zero as they do of each
// other; whether they are empty is asked apart.
double compared_strings(const char* a, const char* b, int64_t code) {
  const bool is_logical = code == QOR_CMP_BOTH || code == QOR_CMP_EITHER;
  const auto truth = [](const char* s) { return qor_len_str(s) > 0 ? 1.0 : 0.0; };
  const auto* first = a == nullptr ? "" : a;
  const auto* second = b == nullptr ? "" : b;
  const double left = is_logical ? truth(first) : qor_str_cmp(first, second);
  const double right = is_logical ? truth(second) : 0.0;
  double result = 0.0;
  comparison(code)([&](auto holds) { result = holds(left, right); });
  return result;
}

QorArray* combined_strings(const QorArray* a, const QorArray* b, int64_t code) {
  auto* result = qor::new_string_array(std::min(a->length, b->length));
  for (int64_t i = 0; i < result->length; ++i)
    qor::set_string(result, i,
                    code == QOR_OP_ADD
                        ? qor_str_concat(qor_array_get_str(a, i), qor_array_get_str(b, i))
                        : qor_str_str(""));
  return result;
}

} // namespace

QorArray* qor_array_binop(const QorArray* a, const QorArray* b, int64_t code) {
  return qor::combined(a, b, arithmetic(code), [code](const QorArray* x, const QorArray* y) {
    return combined_strings(x, y, code);
  });
}

QorArray* qor_array_scalar_op(const QorArray* a, double s, int64_t code, int64_t scalar_first) {
  return qor::combined_with_scalar(a, s, scalar_first != 0, arithmetic(code));
}

QorArray* qor_array_cmp_scalar(const QorArray* a, double s, int64_t code) {
  return qor::combined_with_scalar(a, s, false, comparison(code));
}

QorArray* qor_array_cmp_arr(const QorArray* a, const QorArray* b, int64_t code) {
  return qor::combined(a, b, comparison(code), [code](const QorArray* x, const QorArray* y) {
    auto* result = qor_array_new(std::min(x->length, y->length));
    for (int64_t i = 0; i < result->length; ++i)
      result->data[i] = compared_strings(qor_array_get_str(x, i), qor_array_get_str(y, i), code);
    return result;
  });
}

QorArray* qor_array_cmp_scalar_str(const QorArray* a, const char* s, int64_t code) {
  auto* result = qor_array_new(qor_array_len(a));
  for (int64_t i = 0; qor::has_strings(a) && i < result->length; ++i)
    result->data[i] = compared_strings(qor_array_get_str(a, i), s, code);
  return result;
}
