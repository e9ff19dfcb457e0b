#include "tests/desktop/game/sound_server.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <utility>

#include "tests/desktop/desktop.h"

namespace kavo::playing {

namespace fs = std::filesystem;

Player::Player(std::string folder, Runtime runtime)
    : folder_(std::move(folder)), runtime_(runtime) {
  for (const std::string& path : {home(), configuration(), temporary_folder(), folder_ + "/run"}) {
    fs::create_directory(path);
    fs::permissions(path, fs::perms::owner_all);
  }
}

void Player::own(kavo::desktop::Launch& launch) const {
  auto& environment = launch.environment;
  for (const char* name :
       {"SDL_AUDIODRIVER", "PULSE_SERVER", "PULSE_RUNTIME_PATH", "PULSE_STATE_PATH", "PULSE_COOKIE",
        "PULSE_SINK", "XDG_DATA_HOME", "DBUS_SESSION_BUS_ADDRESS"})
    environment[name] = std::nullopt;
  environment["HOME"] = home();
  environment["XDG_CONFIG_HOME"] = configuration();
  environment["XDG_STATE_HOME"] = state();
  environment["TMPDIR"] = temporary_folder();
  environment["PULSE_BINARY"] = "/nowhere/pulseaudio";
  environment["XDG_RUNTIME_DIR"] =
      runtime_ == Runtime::is_set ? std::optional(folder_ + "/run") : std::nullopt;
}

SoundServer::SoundServer(const Player& player) : player_(player) {
  kavo::desktop::Launch launch;
  launch.arguments = {"pulseaudio",
                      "-n",
                      "--daemonize=no",
                      "--use-pid-file=no",
                      "--exit-idle-time=-1",
                      "--high-priority=no",
                      "--realtime=no",
                      "--load=module-null-sink",
                      "--load=module-native-protocol-unix"};
  player.own(launch);
  process_ = std::make_unique<kavo::desktop::Process>(launch);
  if (!kavo::desktop::eventually([&] { return ask("info").code == 0; }))
    throw std::runtime_error("no sound server: " + process_->errors_so_far());
}

bool SoundServer::is_heard() const {
  return kavo::desktop::eventually([&] { return !ask("list short sink-inputs").output.empty(); });
}

kavo::desktop::Outcome SoundServer::ask(const std::string& question) const {
  kavo::desktop::Launch launch;
  launch.arguments = {"bash", "-c", "pactl " + question};
  player_.own(launch);
  return kavo::desktop::Process(launch).wait();
}

} // namespace kavo::playing
