#include "tools/film/studio.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "game/program.h"
#include "game/values.h"
#include "tests/fakes/fake_clock.h"

namespace kavo::film {

bool run_game(std::initializer_list<const char*> arguments, int seed) {
  setenv("QORRT_SEED", std::to_string(seed).c_str(), 1);
  kavo::test::fake_clock() = {};
  std::vector<std::string> words{"kavo"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  argv.reserve(words.size() + 1);
  for (auto& word : words)
    argv.push_back(word.data());
  argv.push_back(nullptr);

  static_cast<void>(run_program(static_cast<int>(words.size()), argv.data()));
  const bool has_failed = error_is_pending();
  if (has_failed)
    std::cerr << "the game ended with: " << chars(Text(qor_err_msg())) << '\n';
  qor_err_clear();
  return !has_failed;
}

host::Canvas copy_of(const host::Canvas& picture) {
  host::Canvas copy(picture.width(), picture.height());
  std::ranges::copy(picture.pixels(), copy.pixels_to_change().begin());
  return copy;
}

} // namespace kavo::film
