// Every event comes here first: to the game go only those that are meant for it.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "host/attention.h"
#include "host/events.h"
#include "host/input.h"
#include "host/panel/panel.h"

namespace kavo::host {

class Gate final : public EventSink {
public:
  Gate(Events& game, Panel& panel) : game_(game), panel_(panel) {}

  // Whether the player can open the panel; where the sign for that is, while it is shown.
  void set_panel_offered(bool is_offered) { is_panel_offered_ = is_offered; }
  void set_sign(std::optional<Box> sign) { sign_ = sign; }

  // Whether the pointer has moved over the game since the last time.
  bool has_pointer_moved() { return std::exchange(has_pointer_moved_, false); }

  Attention& attention() { return attention_; }

  // Whether the game is to stand still.
  bool holds_game_up() const { return attention_.is_waiting() || panel_.is_open(); }

  // After the events that came together: one button of a controller may be several keys, of which
  // none is to reach the game when the first has ended a standstill.
  void settle();

  void key_went_down(const Key& key, bool is_repeat) override;
  void key_went_up(const Key& key) override;
  void keyboard_was_given() override;
  void keyboard_was_taken() override;
  void picture_was_hidden() override;
  void button_went_down(int button, int x, int y) override;
  void button_went_up(int button, int x, int y) override;
  void pointer_moved(int x, int y) override;
  void close_was_asked() override;

private:
  void press_in_panel(const Key& key);
  bool opens_panel(const Key& key) const;

  Events& game_;
  Panel& panel_;
  bool is_panel_offered_ = false;
  bool has_pointer_moved_ = false;
  bool is_back_ = false; // the player, as a key or a click says
  std::optional<Box> sign_;
  Attention attention_;
  std::vector<int> kept_keys_;    // scancodes of those that are down and not the game's
  std::vector<int> kept_buttons_; // of the pointer
};

} // namespace kavo::host
