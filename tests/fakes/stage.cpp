#include "tests/fakes/stage.h"

#include <stdexcept>
#include <utility>

#include "host/offscreen.h"
#include "host/screen/calm_display.h"

namespace kavo::test {

namespace {

class StageDisplay final : public host::Presenter {
public:
  void present(host::Canvas& canvas) override {
    has_shown_a_picture_ = true;
    if (stage().watch)
      stage().watch(canvas);
  }
  // The host asks for events at the frame's first question for a key, too.
  void deliver_events(host::EventSink& sink) override {
    if (std::exchange(has_shown_a_picture_, false) && stage().play)
      stage().play(sink);
  }
  void wait_for_events(host::EventSink& sink) override {
    if (!stage().wait)
      throw std::logic_error("the host waits for a player whom nobody plays");
    stage().wait(sink);
  }
  std::optional<host::WindowPlace> place() const override { return stage().place; }
  std::optional<host::WindowScale> scale() const override { return stage().scale; }
  void set_scale(int scale) override { stage().scale->now = scale; }
  const std::string& unplayable_reason() const override { return playable_; }

private:
  bool has_shown_a_picture_ = false;
  std::string playable_;
};

class StagePlatform final : public host::Offscreen {
public:
  std::unique_ptr<host::Presenter> open_display(const host::ScreenRequest& request) override {
    stage().requests.push_back(request);
    auto display = std::make_unique<StageDisplay>();
    if (const auto share = stage().calm_share)
      return std::make_unique<host::CalmDisplay>(std::move(display), *share);
    return display;
  }
  std::unique_ptr<sound::Output> make_sound_output() override {
    return stage().make_sound_output ? stage().make_sound_output() : Offscreen::make_sound_output();
  }
  std::optional<int> code_of_key(const std::string& name) override {
    return stage().code_of_key ? stage().code_of_key(name) : Offscreen::code_of_key(name);
  }
  std::filesystem::path settings_folder() override { return stage().settings_folder; }
  std::filesystem::path games_folder() override { return stage().games_folder; }
  std::filesystem::path state_folder() override { return stage().state_folder; }
  void tell(const std::string& line) override { stage().told.push_back(line); }
  [[noreturn]] void end_program(int status) override {
    ++stage().ends;
    Offscreen::end_program(status);
  }
};

} // namespace

Stage& stage() {
  static Stage stage;
  return stage;
}

host::Key key_named(const std::string& name) {
  const auto code = StagePlatform().code_of_key(name);
  if (!code)
    throw std::invalid_argument("no key is called " + name);
  return {.scancode = *code, .code = *code, .name = name.c_str()};
}

} // namespace kavo::test

std::unique_ptr<kavo::host::Platform> kavo::host::make_platform() {
  return std::make_unique<kavo::test::StagePlatform>();
}
