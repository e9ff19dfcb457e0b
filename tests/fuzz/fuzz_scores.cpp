// The score file: any bytes. The program starts with five names and five numbers, and what it then
// saves reads back as the same table.
#include <cmath>
#include <filesystem>
#include <fstream>
#include <vector>

#include "game/highscores/table.h"
#include "game/state.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/sandbox.h"

namespace {

using kavo::HS_NAME;
using kavo::HS_SCORE;

constexpr const char* path = "tmp/kavo_high.txt";
constexpr int64_t entries = 5;

void start_host() {
  qor_runtime_set_handle(qorrt_init(0, nullptr));
  kavo::set_geometry();
}

void require_no_error() {
  kavo::error_is_pending();
  kavo::fuzz::require(qor_err_code() == 0, "no error is left");
  kavo::fuzz::require(qor_recursion_depth() == 0, "every routine is left");
}

struct Entry {
  std::string name;
  double score; // 0 when a save need not keep it
};

// The text of a number that no game can reach loses digits.
double kept_score(double score) {
  return std::abs(score) < 1e15 && score == std::trunc(score) ? score : 0.0;
}

std::vector<Entry> table() {
  kavo::fuzz::require(qor_array_len(HS_NAME.get()) == entries, "there are five names");
  kavo::fuzz::require(qor_array_len(HS_SCORE.get()) == entries, "there are five scores");
  std::vector<Entry> result;
  for (int64_t slot = 0; slot < entries; ++slot) {
    const char* name = qor_array_get_str(HS_NAME.get(), slot);
    kavo::fuzz::require(name != nullptr, "a name is a text");
    result.push_back({name, kept_score(qor_array_get(HS_SCORE.get(), slot))});
  }
  return result;
}

bool is_kept(const std::vector<Entry>& before, const std::vector<Entry>& after) {
  for (size_t slot = 0; slot < before.size(); ++slot)
    if (before[slot].name != after[slot].name ||
        (before[slot].score != 0.0 && before[slot].score != after[slot].score))
      return false;
  return true;
}

void load() {
  kavo::set_initial_values();
  static_cast<void>(kavo::LOADHIGH());
  require_no_error();
}

void save() {
  static_cast<void>(kavo::SAVEHIGH());
  require_no_error();
}

// The first bytes of a file can be a mark of its encoding: a name of such bytes is read as one.
bool begins_like_a_mark(const std::string& name) {
  return !name.empty() && static_cast<unsigned char>(name[0]) >= 0xEF;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  start_host();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const kavo::fuzz::Sandbox folder;
  std::filesystem::create_directory("tmp");
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  load();
  const auto read = table();
  save();
  if (begins_like_a_mark(read[0].name))
    return 0;
  load();
  kavo::fuzz::require(is_kept(read, table()), "what was saved is read back");
  return 0;
}
