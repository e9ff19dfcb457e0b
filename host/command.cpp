#include "host/command.h"

#include <cmath>
#include <cstring>
#include <string>

#include "runtime/qorrt.h"

namespace kavo::host {

std::string_view Arguments::text(int index) const {
  const char* bytes = slots_[index].str;
  if (bytes == nullptr)
    return {};
  const int64_t registered = qorrt_strlen(bytes);
  constexpr int64_t longest = int64_t{1} << 31U;
  if (registered > longest)
    reject_argument(index, "text", "at most " + std::to_string(longest) + " bytes long",
                    std::to_string(registered));
  return {bytes, registered >= 0 ? static_cast<size_t>(registered) : std::strlen(bytes)};
}

int64_t Arguments::whole_number(int index, std::string_view meaning, int64_t least,
                                int64_t most) const {
  const double value = std::trunc(number(index));
  if (value >= static_cast<double>(least) && value <= static_cast<double>(most))
    return static_cast<int64_t>(value);
  reject_argument(index, meaning, std::to_string(least) + " to " + std::to_string(most),
                  shown(number(index)));
}

double Arguments::number_within(int index, std::string_view meaning, double least,
                                double most) const {
  const double value = number(index);
  if (value >= least && value <= most)
    return value;
  reject_argument(index, meaning, shown(least) + " to " + shown(most), shown(value));
}

} // namespace kavo::host
