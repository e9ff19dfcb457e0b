// A sound server of a test's own (PulseAudio) that plays into nothing, and a player's environment
// in which it is found.
#pragma once

#include <memory>
#include <string>

#include "tests/desktop/process.h"

namespace kavo::playing {

// Where the player's programs look for their server.
enum class Runtime {
  is_set, // XDG_RUNTIME_DIR, as in a desktop session
  is_not, // what the programs agree on in the home instead
};

// A home, a temporary folder and what else there is below a folder that is there already, and no
// sound server: none of the machine's is found, and none is started.
class Player {
public:
  Player(std::string folder, Runtime runtime);

  // Has a program run as this player's, with whatever driver SDL chooses.
  void own(kavo::desktop::Launch& launch) const;

  std::string home() const { return folder_ + "/home"; }
  std::string configuration() const { return home() + "/.config"; }
  std::string state() const { return folder_ + "/state"; }
  std::string temporary_folder() const { return folder_ + "/temporary"; }

private:
  std::string folder_;
  Runtime runtime_;
};

class SoundServer {
public:
  // Throws std::runtime_error, with the server's own words, when it does not answer.
  explicit SoundServer(const Player& player);

  // Whether a program plays to it.
  bool is_heard() const;

private:
  // What the server's own tool says of it.
  kavo::desktop::Outcome ask(const std::string& question) const;

  const Player& player_;
  std::unique_ptr<kavo::desktop::Process> process_;
};

} // namespace kavo::playing
