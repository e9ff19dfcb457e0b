// Every event comes here first: to the game go only those that are meant for it.
#pragma once

#include <vector>

#include "host/attention.h"
#include "host/events.h"
#include "host/input.h"

namespace kavo::host {

class Gate final : public EventSink {
public:
  explicit Gate(Events& game) : game_(game) {}

  Attention& attention() { return attention_; }

  // Whether the game is to stand still.
  bool holds_game_up() const { return attention_.is_waiting(); }

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
  Events& game_;
  Attention attention_;
  std::vector<int> kept_keys_;    // scancodes of those that are down and not the game's
  std::vector<int> kept_buttons_; // of the pointer
};

} // namespace kavo::host
