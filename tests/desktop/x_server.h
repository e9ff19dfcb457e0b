// The X server of a test's own: it needs no hardware and draws into memory.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/desktop/process.h"
#include "tests/support/temporary_folder.h"

namespace kavo::desktop {

struct DisplaySize {
  int width;
  int height;
  int depth = 24; // bits of a pixel; a single display may have 8, 15, 16 or 30
};

class XServer {
public:
  // The displays stand side by side, the first one at the left. Throws std::runtime_error with the
  // server's own words when it does not start.
  explicit XServer(const std::vector<DisplaySize>& displays);

  // For DISPLAY.
  const std::string& display_name() const { return display_name_; }
  Process& process() const { return *process_; }

private:
  void start(std::vector<std::string> arguments);
  void write_configuration(const std::vector<DisplaySize>& displays) const;

  kavo::test::TemporaryFolder folder_;
  std::unique_ptr<Process> process_;
  std::string display_name_;
};

// What the server calls a display, counted from 0.
std::string output_name(size_t display);

// A display's name for its only resolution.
std::string mode_name(DisplaySize display);

} // namespace kavo::desktop
