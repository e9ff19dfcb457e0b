// Every event comes here first: to the game go only those that are meant for it.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "host/attention.h"
#include "host/input.h"
#include "host/keys/bound_keys.h"
#include "host/panel/panel.h"
#include "host/replaying/replay_controls.h"

namespace kavo::host {

class Gate final : public EventSink {
public:
  Gate(BoundKeys& game, Panel& panel, ReplayControls& replay)
      : game_(game), panel_(panel), replay_(replay) {}

  // Whether the player can open the panel; where the sign for that is, while it is shown.
  void set_panel_offered(bool is_offered) { is_panel_offered_ = is_offered; }
  void set_sign(std::optional<Box> sign) { sign_ = sign; }

  // Whether the pointer has moved over the game since the last time.
  bool has_pointer_moved() { return std::exchange(has_pointer_moved_, false); }

  Attention& attention() { return attention_; }

  // Whether the game is to stand still.
  bool holds_game_up() const {
    return attention_.is_waiting() || panel_.is_open() || replay_.is_paused();
  }

  // After events: a controller's back button that has been held for a second opens the panel.
  // Where it has nothing to do in play it reaches the game only when it is let go before that.
  void tend(double now_ms);

  void key_went_down(const Key& key, bool is_repeat) override;
  void key_went_up(const Key& key) override;
  void control_went_down(const ControlPress& press) override;
  void control_went_up(const ControlPress& press) override;
  void keyboard_was_given() override;
  void keyboard_was_taken() override;
  void picture_was_hidden() override;
  void button_went_down(int button, int x, int y) override;
  void button_went_up(int button, int x, int y) override;
  void pointer_moved(int x, int y) override;
  void close_was_asked() override;

private:
  bool is_of_replay() const;
  void press_in_replay(Control control);
  void press_in_panel(const Key& key);
  void press_in_panel(Control control);
  void press_in_game(const ControlPress& press);
  bool opens_panel(const Key& key) const;

  // The back button, while it is down in play.
  struct HeldBack {
    ControlPress press;
    bool is_kept_back; // from the game
    std::optional<double> since_ms = {};
  };

  BoundKeys& game_;
  Panel& panel_;
  ReplayControls& replay_;
  bool is_panel_offered_ = false;
  bool has_pointer_moved_ = false;
  std::optional<HeldBack> held_back_;
  std::optional<Box> sign_;
  Attention attention_;
  std::vector<int> kept_keys_;     // scancodes of those that are down and not the game's
  std::vector<int> kept_controls_; // sources
  std::vector<int> kept_buttons_;  // of the pointer
};

} // namespace kavo::host
