// One running host: what the commands work on, and what happens around them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/events.h"
#include "host/frames.h"
#include "host/gate.h"
#include "host/key_names.h"
#include "host/keyboard.h"
#include "host/keys/bound_keys.h"
#include "host/keys/held_repeat.h"
#include "host/panel/panel.h"
#include "host/platform.h"
#include "host/random.h"
#include "host/replaying/replay_controls.h"
#include "host/scores/scores.h"
#include "host/screen/screen.h"
#include "host/settings/settings_store.h"
#include "host/signals.h"
#include "host/sound/player.h"

namespace kavo::host {

class Host {
  std::unique_ptr<Platform> platform_; // outlives what it hands out

public:
  explicit Host(std::unique_ptr<Platform> platform);
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  // Presents the picture and takes the events. Returns when play goes on: not before the player has
  // come back from elsewhere. Ends the program when that was asked for: outside
  // of any frame at once, inside of one at the second picture since, so that nobody waits for an
  // animation that holds its frame up.
  void show_picture();

  // Takes the events first when the frame has not done so yet.
  bool is_key_held(std::string_view key_name);

  // A program shows a recorded game: its keys are the host's until it has ended. Gives what the
  // player wishes (replay_controls.h).
  double take_replay_report(const ReplayReport& report);
  void end_replay();

  int64_t begin_frame() { return frames_.begin(); }

  // Ends the program in order, with status 0, when that was asked for and no frame is open.
  void end_frame(int64_t token);

  // Before anything else is asked of it, by the program's arguments: none is a program of no name,
  // which nobody plays: it has neither scores nor settings, a scene and programs that are not
  // called kavo have no settings either, and what shows a recorded game has no scores. Ends the
  // program, with status 0, when another one has the scores.
  void start(int argument_count, const char* const* arguments);

  // Replaces the screen that may be open.
  void open_screen(const ScreenRequest& request);

  void close_screen();

  // The program has heard of this error of a command and is about to end with it. The text outlives
  // the host.
  void note_failure(const char* error) { failure_ = error; }

  // At the program's exit, whatever the reason: silences the sound, lets go of the scores and shows
  // the failure to its player.
  void leave();

  Scores scores;
  Screen screen{*platform_};
  Keyboard keyboard;
  Events events{keyboard};
  std::unique_ptr<sound::Player> sound;
  std::optional<Random> random; // unset until the first use, which seeds it

private:
  void start_settings();
  void start_scores(int argument_count, const char* const* arguments);
  void apply_settings();
  void tell_where_games_are_kept();
  std::optional<WindowPlace> place_to_remember();
  void take_events();
  void stand_still();
  void draw_above(Canvas& canvas);
  void show_signs();
  PanelWorld panel_world();
  Language language() const;
  bool is_key(const std::string& name) const;
  void change_settings(const Settings& wanted);
  void let_volumes_be_heard(const Settings& before);
  void rest_when_heard();
  bool is_asked_to_end();
  void end_program();

  Panel panel_{panel_world()};
  KeyNames key_names_{*platform_};
  BoundKeys bound_keys_{events, key_names_};
  HeldRepeat held_repeat_{keyboard, key_names_};
  ReplayControls replay_;
  Gate gate_{bound_keys_, panel_, replay_};
  double sign_until_ms_ = 0;  // of the runtime's clock
  double hint_until_ms_ = -1; // below 0: not begun
  bool is_standing_still_ = false;
  std::optional<double> heard_until_ms_; // while it stands still
  Frames frames_;
  std::optional<WindowPlace> remembered_place_; // of the window, when it was last left
  std::optional<WindowPlace> opened_place_;     // as it came up
  SettingsStore settings_{[this](const std::string& name) { return is_key(name); }};
  bool is_played_ = false;
  bool has_settings_ = false; // of its player
  QuitSignals quit_signals_;
  WriteSignals write_signals_;
  const char* failure_ = nullptr;
  int pictures_since_asked_to_end_ = 0;
  bool has_taken_events_ = false; // in this frame
};

} // namespace kavo::host
