#include "tests/film/studio.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "game/program.h"
#include "game/values.h"
#include "host/screen/calm_display.h"
#include "tests/fakes/fake_clock.h"

namespace kavo::film {

namespace {

class StudioPresenter final : public host::Presenter {
public:
  void present(host::Canvas& canvas) override {
    has_shown_a_picture_ = true;
    if (studio().watch)
      studio().watch(canvas);
  }
  // The host asks for events at the frame's first question for a key, too.
  void deliver_events(host::EventSink& sink) override {
    if (std::exchange(has_shown_a_picture_, false) && studio().play)
      studio().play(sink);
  }
  const std::string& unplayable_reason() const override { return playable_; }

private:
  bool has_shown_a_picture_ = false;
  std::string playable_;
};

} // namespace

Studio& studio() {
  static Studio studio;
  return studio;
}

bool run_game(std::initializer_list<const char*> arguments, int seed) {
  setenv("SDL_AUDIODRIVER", "dummy", 1);
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
  std::vector<uint32_t> memory(picture.pixels().size());
  copy.move_to(memory.data());
  std::ranges::copy(picture.pixels(), memory.begin());
  copy.move_home();
  return copy;
}

} // namespace kavo::film

// Stands before the host's own, which would look for a desktop.
std::unique_ptr<kavo::host::Presenter>
kavo::host::open_presenter(const kavo::host::ScreenRequest& request) {
  auto camera = std::make_unique<kavo::film::StudioPresenter>();
  if (const auto share = kavo::film::studio().calm_share)
    return std::make_unique<kavo::host::CalmDisplay>(request.width, request.height,
                                                     std::move(camera), *share);
  return camera;
}
