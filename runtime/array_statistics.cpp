#include "runtime/array_statistics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numeric>
#include <span>

#include "runtime/array.h"
#include "runtime/array_math.h"
#include "runtime/array_order.h"
#include "runtime/internal/containers.h"
#include "runtime/internal/elementwise.h"

namespace {

using Run = std::span<const double>;

constexpr size_t lanes = 8;
constexpr size_t shortest_for_lanes = 64;

// The sum of term(0) to term(length - 1). Side by side, partial sums do not wait for each other.
template<typename Term>
double summed(size_t length, Term term) {
  double sum = 0.0;
  size_t i = 0;
  if (length >= shortest_for_lanes) {
    std::array<double, lanes> partial{};
    for (; i + lanes <= length; i += lanes)
      for (size_t lane = 0; lane < lanes; ++lane)
        partial[lane] += term(i + lane);
    sum = std::accumulate(partial.begin(), partial.end(), 0.0);
  }
  for (; i < length; ++i)
    sum += term(i);
  return sum;
}

double sum_of(Run run) {
  return summed(run.size(), [run](size_t i) { return run[i]; });
}

bool is_set(double x) {
  return x != 0.0;
}

int64_t size_of(const QorArray* array) {
  int64_t count = 0;
  qor::for_each_run(array, [&count](Run run) { count += std::ssize(run); });
  return count;
}

template<typename Operation>
QorArray* running_below(const QorArray* array, Operation operation) {
  if (qor::has_rows(array))
    return qor::new_rows(
        array->length, [=](int64_t i) { return running_below(qor::row_of(array, i), operation); });
  const qor::Numbers values(array);
  auto* result = qor::new_uninitialised_array(static_cast<int64_t>(values.size()), 0);
  std::partial_sum(values.data(), values.data() + values.size(), result->data, operation);
  return result;
}

template<typename Operation>
QorArray* running(const QorArray* array, Operation operation) {
  return qor::made_with_room_for(array, nullptr, [&] { return running_below(array, operation); });
}

} // namespace

double qor_array_sum(const QorArray* array) {
  double sum = 0.0;
  qor::for_each_run(array, [&sum](Run run) { sum += sum_of(run); });
  return sum;
}

double qor_array_product(const QorArray* array) {
  double product = 1.0;
  qor::for_each_run(array, [&product](Run run) {
    product = std::accumulate(run.begin(), run.end(), product, std::multiplies<>());
  });
  return product;
}

double qor_array_dot(const QorArray* a, const QorArray* b) {
  if (qor::has_rows(a) || qor::has_rows(b)) {
    auto* products = qor_array_binop(a, b, QOR_OP_MULTIPLY);
    const double sum = qor_array_sum(products);
    qor_array_free_deep(products);
    return sum;
  }
  const qor::Numbers left(a);
  const qor::Numbers right(b);
  return summed(std::min(left.size(), right.size()),
                [x = left.data(), y = right.data()](size_t i) { return x[i] * y[i]; });
}

int qor_array_any(const QorArray* array) {
  return qor_array_count(array) > 0 ? 1 : 0;
}

int qor_array_all(const QorArray* array) {
  return qor_array_count(array) == size_of(array) ? 1 : 0;
}

int64_t qor_array_count(const QorArray* array) {
  int64_t count = 0;
  qor::for_each_run(array, [&count](Run run) { count += std::ranges::count_if(run, is_set); });
  return count;
}

double qor_mean(const QorArray* array) {
  const auto count = size_of(array);
  return count == 0 ? 0.0 : qor_array_sum(array) / static_cast<double>(count);
}

double qor_array_variance(const QorArray* array) {
  const auto count = size_of(array);
  if (count < 2)
    return 0.0;
  const double mean = qor_mean(array);
  double squares = 0.0;
  qor::for_each_run(array, [&squares, mean](Run run) {
    squares +=
        summed(run.size(), [run, mean](size_t i) { return (run[i] - mean) * (run[i] - mean); });
  });
  return squares / static_cast<double>(count);
}

double qor_stdev(const QorArray* array) {
  return std::sqrt(qor_array_variance(array));
}

double qor_array_median(const QorArray* array) {
  qor::Vector<double> all;
  qor::for_each_run(array, [&all](Run run) { all.insert(all.end(), run.begin(), run.end()); });
  const QorArray flat{.data = all.data(), .length = std::ssize(all), .flags = 0, .tags = nullptr};
  auto* sorted = qor_array_sort(&flat);
  const auto middle = sorted->length / 2;
  const bool is_even = sorted->length % 2 == 0;
  const double upper = qor_array_get(sorted, middle);
  const double median = is_even ? (qor_array_get(sorted, middle - 1) + upper) / 2 : upper;
  qor_array_free(sorted);
  return median;
}

QorArray* qor_array_cumsum(const QorArray* array) {
  return running(array, std::plus<>());
}

QorArray* qor_array_cumprod(const QorArray* array) {
  return running(array, std::multiplies<>());
}
