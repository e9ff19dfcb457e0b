#include "tests/desktop/x_server.h"

#include <unistd.h>

#include <array>
#include <fstream>
#include <stdexcept>

namespace kavo::desktop {

namespace {

using Arguments = std::vector<std::string>;

std::string read_line(int file) {
  std::string line;
  char character = 0;
  while (read(file, &character, 1) == 1 && character != '\n')
    line += character;
  return line;
}

// Xvfb knows one display only.
Arguments single_display(DisplaySize display) {
  return {"Xvfb", "-screen", "0", mode_name(display) + "x" + std::to_string(display.depth)};
}

// Xorg's driver without hardware has several. The program itself, for Xorg's wrapper lets nobody in
// who does not sit at the machine.
Arguments several_displays(const kavo::test::TemporaryFolder& folder) {
  return {"/usr/lib/xorg/Xorg", "-config",  folder / "xorg.conf", "-configdir",
          folder / "nothing.d", "-logfile", folder / "log"};
}

std::string setting(const std::string& name, const std::string& value) {
  return "  " + name + " \"" + value + "\"\n";
}

std::string option(const std::string& name, const std::string& value) {
  return setting("Option \"" + name + "\"", value);
}

std::string section(const std::string& name, const std::string& content) {
  return "Section \"" + name + "\"\n" + content + "EndSection\n";
}

// Timings matter to nobody here; they only have to be in order.
std::string timings_of(DisplaySize display) {
  std::string timings = " 100";
  for (const int visible : {display.width, display.height})
    for (const int margin : {0, 8, 16, 24})
      timings += ' ' + std::to_string(visible + margin);
  return timings;
}

std::string monitor(size_t number, DisplaySize display) {
  const std::string mode = mode_name(display);
  std::string content = setting("Identifier", output_name(number)) +
                        "  HorizSync 1-2000\n  VertRefresh 1-2000\n" + "  Modeline \"" + mode +
                        '"' + timings_of(display) + '\n' + option("PreferredMode", mode) +
                        option("Enable", "true");
  if (number > 0)
    content += option("RightOf", output_name(number - 1));
  return section("Monitor", content);
}

} // namespace

std::string output_name(size_t display) {
  return "DUMMY" + std::to_string(display);
}

std::string mode_name(DisplaySize display) {
  return std::to_string(display.width) + 'x' + std::to_string(display.height);
}

XServer::XServer(const std::vector<DisplaySize>& displays) {
  if (displays.size() == 1) {
    start(single_display(displays[0]));
  } else {
    write_configuration(displays);
    start(several_displays(folder_));
  }
}

// The server picks a free display number itself and tells which through the pipe.
void XServer::start(std::vector<std::string> arguments) {
  std::array<int, 2> pipe_ends = {};
  if (pipe(pipe_ends.data()) != 0)
    throw std::runtime_error("no pipe");
  const Arguments common = {"-displayfd", std::to_string(pipe_ends[1]), "-nolisten", "tcp",
                            "-noreset"};
  arguments.insert(arguments.end(), common.begin(), common.end());
  process_ = std::make_unique<Process>(Launch{arguments, {}, "."});
  close(pipe_ends[1]);
  const std::string number = read_line(pipe_ends[0]);
  close(pipe_ends[0]);
  if (number.empty())
    throw std::runtime_error(arguments[0] + " did not start: " + process_->wait().errors);
  display_name_ = ":" + number;
}

// No keyboard and no mouse of the machine, for the tests press keys of their own.
void XServer::write_configuration(const std::vector<DisplaySize>& displays) const {
  std::ofstream file(folder_ / "xorg.conf");
  file << section("ServerFlags", option("AutoAddDevices", "false"))
       << section("Device", setting("Identifier", "card") + setting("Driver", "dummy") +
                                "  VideoRam 65536\n");
  for (size_t i = 0; i < displays.size(); ++i)
    file << monitor(i, displays[i]);
  file << section("Screen", setting("Identifier", "screen") + setting("Device", "card") +
                                setting("Monitor", output_name(0)) + "  DefaultDepth 24\n");
}

} // namespace kavo::desktop
