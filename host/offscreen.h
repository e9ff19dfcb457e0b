// The twin of a place to play in: pictures go nowhere, nothing ever happens, nothing is heard.
#pragma once

#include <memory>
#include <string>

#include "host/platform.h"

namespace kavo::host {

// A display that nobody sees; why nobody can play there, or empty if that is as it should be.
std::unique_ptr<Presenter> open_offscreen_display(std::string unplayable_reason);

// A whole place of that kind. Scenes, measurements and tests of the commands need no more.
class Offscreen : public Platform {
public:
  std::unique_ptr<Presenter> open_display(const ScreenRequest& request) override;
  std::unique_ptr<sound::Output> make_sound_output() override;
  // Knows the keys that programs commonly ask for.
  std::optional<int> code_of_key(const std::string& name) override;
  // On standard error.
  void tell(const std::string& line) override;
  [[noreturn]] void end_program(int status) override;
};

} // namespace kavo::host
