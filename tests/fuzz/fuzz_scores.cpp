// The score file: any bytes. The program starts with five names and five numbers, and what it then
// saves reads back as the same table.
#include <filesystem>
#include <fstream>
#include <vector>

#include "game/highscores/table.h"
#include "game/state.h"
#include "tests/fuzz/input.h"

namespace {

using kavo::HS_NAME;
using kavo::HS_SCORE;

constexpr const char* path = "tmp/kavo_high.txt";
constexpr int64_t entries = 5;

// A folder of its own, in memory where there is such a place.
void enter_folder() {
  const std::filesystem::path memory = "/dev/shm";
  std::string name =
      (is_directory(memory) ? memory : std::filesystem::temp_directory_path()) / "kavo-fuzz-XXXXXX";
  fuzz::require(mkdtemp(name.data()) != nullptr, "there is a folder");
  std::filesystem::current_path(name);
  std::filesystem::create_directory("tmp");
  static const std::string folder = name;
  std::atexit([] { std::filesystem::remove_all(folder); });
}

void start_host() {
  qor_runtime_set_handle(qorrt_init(0, nullptr));
  kavo::set_geometry();
}

void require_no_error() {
  kavo::error_is_pending();
  fuzz::require(qor_err_code() == 0, "no error is left");
  fuzz::require(qor_recursion_depth() == 0, "every routine is left");
}

std::vector<std::string> table() {
  fuzz::require(qor_array_len(HS_NAME.get()) == entries, "there are five names");
  fuzz::require(qor_array_len(HS_SCORE.get()) == entries, "there are five scores");
  std::vector<std::string> texts;
  for (int64_t slot = 0; slot < entries; ++slot) {
    const char* name = qor_array_get_str(HS_NAME.get(), slot);
    fuzz::require(name != nullptr, "a name is a text");
    const fuzz::Text score(qor_double_to_str(qor_array_get(HS_SCORE.get(), slot)));
    texts.emplace_back(name);
    texts.emplace_back(score.get());
  }
  return texts;
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
  enter_folder();
  start_host();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  load();
  const auto read = table();
  save();
  if (begins_like_a_mark(read[0]))
    return 0;
  load();
  fuzz::require(table() == read, "what was saved is read back");
  return 0;
}
