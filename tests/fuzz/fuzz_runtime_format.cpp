// Format texts: any text, any numbers.
#include "runtime/format.h"
#include "tests/fuzz/input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kavo::fuzz::Input input(data, size);
  const auto a = input.value<double>();
  const auto b = input.value<int64_t>();
  const auto word = input.text();
  const auto format = input.text(16384);
  const kavo::fuzz::Text numbers(qor_format2(format.c_str(), a, static_cast<double>(b)));
  const kavo::fuzz::Text typed(
      qor_format3_t(format.c_str(), "sif", {.str = word.c_str()}, {.i64 = b}, {.f64 = a}));
  for (const auto* result : {numbers.get(), typed.get()})
    kavo::fuzz::require(std::strlen(result) <= 4090, "the limit holds");
  if (format.find('{') == std::string::npos && format.size() <= 4090)
    kavo::fuzz::require(format == numbers.get(), "plain text is copied");
  return 0;
}
