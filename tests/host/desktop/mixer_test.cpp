// What the sound server's mixer shows of the game: a real server with a sink that nobody hears.
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "host/desktop/desktop_platform.h"
#include "host/sound/output.h"
#include "tests/desktop/desktop.h"
#include "tests/desktop/process.h"
#include "tests/host/bridge.h"
#include "tests/support/temporary_folder.h"

namespace {

using kavo::desktop::Launch;
using kavo::desktop::Process;
using kavo::test::Environment;
using kavo::test::TemporaryFolder;

class SoundServer {
public:
  SoundServer()
      : server_(Launch{{"pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no",
                        "--exit-idle-time=-1", "--log-level=info", "--disable-shm", "-L",
                        "module-null-sink", "-L",
                        "module-native-protocol-unix auth-anonymous=1 socket=" + socket()},
                       {{"HOME", folder_.path().string()},
                        {"PULSE_RUNTIME_PATH", folder_.path().string()},
                        {"PULSE_STATE_PATH", folder_.path().string()}},
                       "."}) {
    const auto is_ready = [this] {
      return server_.errors_so_far().find("startup complete") != std::string::npos ||
             !server_.is_running();
    };
    if (!kavo::desktop::eventually(is_ready) || !server_.is_running())
      throw std::runtime_error("no sound server: " + server_.errors_so_far());
  }

  std::string address() const { return "unix:" + socket(); }

  // What its mixers are told of: "clients", "sink-inputs".
  std::string list(const std::string& what) const {
    return Process({{"pactl", "--server", address(), "list", what}, {{"LC_ALL", "C"}}, "."})
        .wait()
        .output;
  }

private:
  std::string socket() const { return folder_ / "socket"; }

  TemporaryFolder folder_;
  Process server_;
};

class Mixer : public testing::Test {
protected:
  const SoundServer server_;
  const std::string address_ = server_.address();
  const Environment driver_{"SDL_AUDIODRIVER", "pulseaudio"};
  const Environment server_address_{"PULSE_SERVER", address_.c_str()};
};

TEST_F(Mixer, ShowsTheGameByItsNameAndIcon) {
  const Environment icon("PULSE_PROP_application.icon_name", nullptr);
  kavo::host::DesktopPlatform platform;
  const auto output = platform.make_sound_output();
  output->open();
  for (const std::string what : {"clients", "sink-inputs"}) {
    const std::string shown = server_.list(what);
    EXPECT_NE(shown.find("application.name = \"KAVO\""), std::string::npos) << shown;
    EXPECT_NE(shown.find("application.icon_name = \"kavo\""), std::string::npos) << shown;
  }
  const std::string stream = server_.list("sink-inputs");
  EXPECT_NE(stream.find("media.name = \"KAVO\""), std::string::npos) << stream;
  EXPECT_NE(stream.find("media.role = \"game\""), std::string::npos) << stream;
  output->close();
}

TEST_F(Mixer, ShowsWhatThePlayerHasSetInstead) {
  const Environment name("SDL_AUDIO_DEVICE_APP_NAME", "living room");
  const Environment icon("PULSE_PROP_application.icon_name", "sofa");
  kavo::host::DesktopPlatform platform;
  const auto output = platform.make_sound_output();
  output->open();
  const std::string shown = server_.list("sink-inputs");
  EXPECT_NE(shown.find("application.name = \"living room\""), std::string::npos) << shown;
  EXPECT_NE(shown.find("application.icon_name = \"sofa\""), std::string::npos) << shown;
  output->close();
}

} // namespace
