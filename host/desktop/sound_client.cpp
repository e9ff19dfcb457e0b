#include "host/desktop/sound_client.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "host/descriptor.h"

namespace kavo::sound {

namespace {

namespace fs = std::filesystem;

// "" when it is not set.
std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

bool may_load_client() {
  const std::string driver = variable("SDL_AUDIODRIVER");
  return driver.empty() || driver.find("pulse") != std::string::npos ||
         driver.find("alsa") != std::string::npos;
}

// The client starts a server for everybody but root, which then needs the folders.
bool may_start_server() {
  const std::string named = variable("PULSE_BINARY");
  const std::string program = named.empty() ? "/usr/bin/pulseaudio" : named;
  return geteuid() != 0 && access(program.c_str(), X_OK) == 0;
}

// A link to the folder of a server that was started without XDG_RUNTIME_DIR.
bool has_link_to_server(const fs::path& folder) {
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error))
    if (entry->path().filename().string().ends_with("-runtime") && fs::is_directory(*entry, error))
      return true;
  return false;
}

bool is_server_known_at_home() {
  const fs::path home = variable("HOME");
  const std::string named = variable("XDG_CONFIG_HOME");
  const fs::path configuration = named.empty() ? home / ".config" : fs::path(named);
  return has_link_to_server(configuration / "pulse") || has_link_to_server(home / ".pulse") ||
         has_link_to_server(variable("PULSE_STATE_PATH"));
}

// Of a session that did not tell this program of it; "" when there is none.
std::string folder_of_session_server() {
  const std::string folder = "/run/user/" + std::to_string(geteuid()) + "/pulse";
  return access(folder.c_str(), X_OK) == 0 ? folder : "";
}

// A folder of ours that is there, so that no other is made, and has no name any more: nothing is
// found in it or left behind. It must be ours alone, or the client complains.
host::Descriptor open_folder_without_name() {
  std::error_code error;
  std::string name = fs::temp_directory_path(error) / "kavo-XXXXXX";
  if (error || mkdtemp(name.data()) == nullptr)
    return host::Descriptor(-1);
  host::Descriptor folder(open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  rmdir(name.c_str());
  return folder;
}

} // namespace

void keep_sound_client_out_of_home() {
  if (!variable("XDG_RUNTIME_DIR").empty() || !variable("PULSE_RUNTIME_PATH").empty() ||
      !may_load_client() || is_server_known_at_home())
    return;
  std::string folder = folder_of_session_server();
  if (folder.empty() && may_start_server())
    return;
  if (folder.empty()) {
    static const host::Descriptor without_name = open_folder_without_name(); // while we run
    if (!without_name.is_open())
      return;
    // The client follows no link, which the name without its last part is.
    folder = "/proc/self/fd/" + std::to_string(without_name.value()) + "/.";
  }
  setenv("PULSE_RUNTIME_PATH", folder.c_str(), 1);
}

} // namespace kavo::sound
