// The real game in a real window, as its player sees it: pixels in, keys out.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/desktop.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace kavo::playing {

constexpr const char* title = "KAVO - Schlagseite";
constexpr uint32_t night = 0x0C1A2C;      // behind the menu screens
constexpr uint32_t empty_cell = 0x1C2838; // of the well
constexpr uint32_t well_frame = 0x463422; // while the stack is low

// How the game is started in this folder; chance is fixed by `seed`, free when that is empty.
kavo::desktop::Launch launch(const std::string& folder, const std::string& seed,
                             std::vector<std::string> arguments);

// Under what conditions a game is to run.
struct Conditions {
  // Empty leaves chance free.
  std::string seed = {};
  // What it finds in its folder.
  std::function<void(const kavo::test::TemporaryFolder&)> arrange = {};
  // How it is started otherwise.
  std::function<void(kavo::desktop::Launch&)> change = {};
  // What it is shown on; more than one stand side by side, with a window manager.
  std::vector<kavo::desktop::DisplaySize> displays = {{1280, 1024}};
  // One that runs with a single display, too.
  bool has_window_manager = false;
};

// What a cell of the upright board shows, left of its middle.
uint32_t cell_in(const kavo::desktop::Bitmap& picture, int row, int column);

// One game that runs in a folder of its own, with its window in front.
class Game {
public:
  // Chance is fixed by `seed`; empty leaves it free.
  explicit Game(const std::string& seed = "") : Game(Conditions{.seed = seed}) {}
  explicit Game(const Conditions& conditions);

  // Waits until the picture answers the question with yes; false when it does not come to that.
  template<typename Question>
  bool shows(Question question) {
    return kavo::desktop::eventually([&] { return question(picture()); });
  }

  kavo::desktop::Bitmap picture() const { return window->pixels(); }
  void tap(const std::string& key) { desktop.tap(key); }

  // Where the game is, seen from outside.
  bool is_on_title();
  bool is_in_options();
  bool is_playing();
  bool is_entering_a_name();
  bool is_paused();
  // Help and settings are open, with the first row of a page chosen.
  bool is_panel_open();
  // It stands still, dimmed, because its player is elsewhere.
  bool is_waiting();

  // The leftmost board column in which anything but an empty cell is seen in the upper nine rows,
  // where the falling piece is, and neither the stack nor the points that rise from it; 10 when
  // there is nothing.
  int leftmost_column() const;

  // Whether the falling piece has so far to go that a few taps are seen before it leaves those
  // rows; false when a busy machine let it fall.
  bool is_piece_high() const;

  // Taps Left (moves < 0) or Right, each tap only when the one before is seen to have moved the
  // falling piece. Returns the number that did.
  int move(int moves);

  // From the title to a game with its first piece.
  void start_playing();

  // From a game to the title and to the next.
  void start_again();

  // From the title to the name entry, after a game that was lost at once.
  void lose();

  // From the name entry on: takes the first name, AAA.
  void enter_name() { tap("Return"); }

  kavo::test::TemporaryFolder folder;
  kavo::desktop::Desktop desktop;
  std::unique_ptr<kavo::desktop::Process> process;
  std::optional<kavo::desktop::DesktopWindow> window;
};

} // namespace kavo::playing
