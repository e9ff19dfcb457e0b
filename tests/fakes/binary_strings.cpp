#include "tests/fakes/binary_strings.h"

#include <cstdlib>
#include <cstring>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "runtime/qorrt.h"

namespace {

struct HostValue {
  double number;
  std::string text;
};

std::unordered_map<const char*, int64_t>& lengths() {
  static std::unordered_map<const char*, int64_t> map;
  return map;
}

constexpr int64_t stale_length = 5;
bool are_lengths_stale = false;

// What was forgotten or registered since lengths are stale.
std::unordered_set<const char*>& fresh() {
  static std::unordered_set<const char*> set;
  return set;
}

std::vector<HostValue>& host_values() {
  static std::vector<HostValue> values;
  return values;
}

const HostValue* find_host_value(int64_t value) {
  const auto& values = host_values();
  const bool is_known = value >= 1 && value <= std::ssize(values);
  return is_known ? &values[static_cast<size_t>(value - 1)] : nullptr;
}

} // namespace

size_t kavo::fakes::registered_strings() {
  return lengths().size();
}

kavo::fakes::StaleLengths::StaleLengths() {
  are_lengths_stale = true;
}

kavo::fakes::StaleLengths::~StaleLengths() {
  are_lengths_stale = false;
  fresh().clear();
}

int64_t kavo::fakes::make_host_value(double number, std::string text) {
  host_values().push_back({number, std::move(text)});
  return std::ssize(host_values());
}

int64_t qorrt_init(int /*argc*/, char** /*argv*/) {
  return 1;
}
void qorrt_shutdown(int64_t /*handle*/) {}
void qorrt_set_event_dispatcher(int64_t /*handle*/, qorrt_dispatch_fn /*dispatch*/) {}

double qorrt_call_typed_f64(int64_t /*handle*/, const char* /*name*/, const void* /*slots*/,
                            const uint32_t* /*tags*/, int64_t /*n*/) {
  return 0.0;
}

QorArray* qorrt_call_typed_arr(int64_t /*handle*/, const char* /*name*/, const void* /*slots*/,
                               const uint32_t* /*tags*/, int64_t /*n*/) {
  return nullptr;
}

const char* qorrt_last_error(int64_t /*handle*/) {
  return nullptr;
}
void qorrt_clear_last_error(int64_t /*handle*/) {}
int64_t qorrt_frame_begin(int64_t /*handle*/) {
  return 1;
}
void qorrt_frame_end(int64_t /*handle*/, int64_t /*token*/) {}

double qorrt_val_to_f64(int64_t /*handle*/, int64_t value) {
  const auto* found = find_host_value(value);
  return found == nullptr ? 0.0 : found->number;
}

char* qorrt_val_to_str(int64_t /*handle*/, int64_t value) {
  const auto* found = find_host_value(value);
  return strdup(found == nullptr ? "" : found->text.c_str());
}

void qorrt_register_binary(const char* s, int64_t length) {
  if (are_lengths_stale)
    fresh().insert(s);
  if (length < 0)
    lengths().erase(s);
  else
    lengths()[s] = length;
}

int64_t qorrt_strlen(const char* s) {
  const auto found = lengths().find(s);
  if (found != lengths().end())
    return found->second;
  return are_lengths_stale && !fresh().contains(s) ? stale_length : -1;
}
