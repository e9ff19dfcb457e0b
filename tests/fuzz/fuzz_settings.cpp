// The file of settings: any bytes. Whatever it says, what is then changed reads back, and what is
// not ours stays.
#include <string>

#include "host/settings/settings_file.h"
#include "tests/fuzz/input.h"

namespace {

using kavo::host::Settings;

Settings changed(Settings settings) {
  settings.music = settings.music == 100 ? 0 : 100;
  settings.is_calm = !settings.is_calm;
  settings.language = kavo::host::Language::german;
  return settings;
}

// Any bytes, or a file of ours in which some stand at some place.
std::string file_of(kavo::fuzz::Input& input) {
  const auto place = input.value<uint16_t>();
  if (place == 0)
    return input.bytes(65'536);
  std::string text = kavo::host::new_settings_text({});
  const auto replaced = input.value<uint8_t>();
  const size_t start = place % text.size();
  return text.replace(start, replaced % 64, input.bytes(65'536));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kavo::fuzz::Input input(data, size);
  const std::string text = file_of(input);
  Settings before;
  kavo::host::read_settings(text, before);
  const Settings after = changed(before);
  const std::string rewritten = kavo::host::with_changes(text, before, after);
  Settings read;
  kavo::host::read_settings(rewritten, read);
  kavo::fuzz::require(read == after, "what was changed is read back, and all else with it");
  kavo::fuzz::require(kavo::host::with_changes(rewritten, after, after) == rewritten,
                      "nothing changes when nothing is changed");
  return 0;
}
