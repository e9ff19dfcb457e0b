// A place to play in that a test makes: its pictures go to whoever watches, its keys come from a
// piece of code, its sound goes where the test says. What a test leaves open is as offscreen.
//
// It is the place of every program that links fake_stage with the host in place of the desktop.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/platform.h"

namespace kavo::test {

struct Stage {
  std::function<void(host::EventSink&)> play;     // once a picture: what the player does now
  std::function<void(const host::Canvas&)> watch; // every picture that is shown
  std::function<void(host::EventSink&)> wait;     // what happens while the host waits
  std::optional<int> calm_share;                  // of a calm display to show them on
  std::function<std::unique_ptr<sound::Output>()> make_sound_output;
  std::function<std::optional<int>(const std::string&)> code_of_key;
  std::filesystem::path settings_folder; // empty: no settings are kept
  std::filesystem::path state_folder;
  std::vector<host::ScreenRequest> requests = {}; // for displays
  std::optional<host::WindowPlace> place;         // of the window, as it is now
  std::optional<host::WindowScale> scale;
  std::filesystem::path games_folder; // empty: no games are kept
  std::vector<std::string> told = {}; // to the player
  int ends = 0;                       // how often the host ended the program
};

// Read whenever something happens: a test may change it while a host runs.
Stage& stage();

// The key as the stage's own events carry it; the name must live as long.
host::Key key_named(const std::string& name);

} // namespace kavo::test
