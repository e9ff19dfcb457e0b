// What the player did: remembered for the keyboard, passed on to the program's dispatcher.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "host/input.h"
#include "host/keyboard.h"
#include "host/screen/presenter.h"
#include "runtime/qorrt.h"

namespace kavo::host {

class Events final : public EventSink {
public:
  explicit Events(Keyboard& keyboard) : keyboard_(keyboard) {}

  void set_dispatcher(qorrt_dispatch_fn dispatch) { dispatch_ = dispatch; }

  // Lets `presenter` report what happened to `sink`, or wait for it. A dispatcher that gets here
  // again is not served twice.
  void take_from(Presenter& presenter, EventSink& sink);
  void wait_for(Presenter& presenter, EventSink& sink);

  // Whether what is called now was called because of an event.
  bool is_taking() const { return is_taking_; }

  // Raises QUIT once; the program ends when its frame does.
  void ask_to_quit();
  bool is_quitting() const { return is_quitting_; }

  void key_went_down(const Key& key, bool is_repeat) override;
  void key_went_up(const Key& key) override;
  void keyboard_was_taken() override;
  void button_went_down(int button, int x, int y) override;
  void button_went_up(int button, int x, int y) override;
  void pointer_moved(int x, int y) override;
  void close_was_asked() override;

private:
  struct Value {
    int64_t bits;
    uint32_t tag;
  };
  static Value number(int value);
  static Value text(const char* value);
  void raise(const char* name, std::initializer_list<Value> values);

  Keyboard& keyboard_;
  qorrt_dispatch_fn dispatch_ = nullptr;
  bool is_taking_ = false;
  bool is_quitting_ = false;
};

} // namespace kavo::host
