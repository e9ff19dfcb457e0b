// Between the player's hands and the program: what is bound to an action goes on as the key by
// which a program asks for that action.
//
// A key that is bound to "left" becomes "Left", unless it is one of the action's own names ("Left",
// "A") and can go on as it is. A name of an action whose key was given away reaches nobody: who
// binds A to something else must not move left with it. Keys that have nothing to do with actions
// go on as they are. As the game comes, so do all.
#pragma once

#include <functional>

#include "host/input.h"
#include "host/key_names.h"
#include "host/keys/bindings.h"

namespace kavo::host {

class BoundKeys final : public EventSink {
public:
  BoundKeys(EventSink& program, KeyNames& names) : program_(program), names_(names) {}

  // Keys that are down by then should be let go.
  void set_bindings(const Bindings& bindings) { bindings_ = bindings; }
  const Bindings& bindings() const { return bindings_; }

  void key_went_down(const Key& key, bool is_repeat) override;
  void key_went_up(const Key& key) override;
  // A control goes on as one key for each of its actions, each with a scancode of its own above the
  // press's source.
  void control_went_down(const ControlPress& press) override;
  void control_went_up(const ControlPress& press) override;

  void keyboard_was_given() override { program_.keyboard_was_given(); }
  void keyboard_was_taken() override { program_.keyboard_was_taken(); }
  void picture_was_hidden() override { program_.picture_was_hidden(); }
  void button_went_down(int button, int x, int y) override {
    program_.button_went_down(button, x, y);
  }
  void button_went_up(int button, int x, int y) override { program_.button_went_up(button, x, y); }
  void pointer_moved(int x, int y) override { program_.pointer_moved(x, y); }
  void close_was_asked() override { program_.close_was_asked(); }

private:
  using PassOn = std::function<void(const Key&)>;
  void translate(const Key& key, const PassOn& pass_on);
  void translate(const ControlPress& press, const PassOn& pass_on);

  EventSink& program_;
  KeyNames& names_;
  Bindings bindings_;
};

} // namespace kavo::host
