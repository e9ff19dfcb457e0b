// A week's prices: the library from C++, with a host of the program's own (host.cpp).
#include <cstdio>
#include <memory>

#include "runtime/qor.h"

namespace {

struct Free {
  void operator()(char* text) const { qor_str_free(text); }
  void operator()(QorArray* array) const { qor_array_free(array); }
};
using Text = std::unique_ptr<char, Free>;
using Array = std::unique_ptr<QorArray, Free>;

} // namespace

int main() {
  const Array prices(qor_linspace(10, 16, 7));
  for (int64_t day = 0; day < qor_array_len(prices.get()); ++day) {
    qor_slot weekday;
    weekday.i64 = day + 1;
    const Text name(qor_format1_t("{:<10s}", "h", weekday));
    const Text price(qor_format1("{:>6.2f}", qor_array_get(prices.get(), day)));
    std::printf("%s%s\n", name.get(), price.get());
  }
  const Text mean(qor_format1("mean {:.2f}", qor_mean(prices.get())));
  std::puts(mean.get());

  bool is_converted = false;
  const auto euro = qor_enc::encode_from_utf8("\u20AC", "cp1252", &is_converted);
  std::printf("the euro in cp1252: %02X\n", static_cast<unsigned char>(euro.front()));
  return is_converted ? 0 : 1;
}
