// What the player did: keys, the pointer, the wish to leave.
#pragma once

namespace kavo::host {

struct Key {
  int scancode;     // which key it is, of all that there are; a platform's own number
  int code;         // what it stands for, as Platform::code_of_key tells it
  const char* name; // the platform's name for that; lives as long as the call that passes it
};

// Receives what the player did, in order. Coordinates are the picture's pixels.
class EventSink {
public:
  virtual ~EventSink() = default;
  virtual void key_went_down(const Key& key, bool is_repeat) = 0;
  virtual void key_went_up(const Key& key) = 0;
  virtual void keyboard_was_given() {}   // the keys are this program's from now on
  virtual void keyboard_was_taken() = 0; // something else has it now; no key is held any more
  virtual void picture_was_hidden() {}   // nobody can see it: minimised, on another desktop
  virtual void button_went_down(int button, int x, int y) = 0;
  virtual void button_went_up(int button, int x, int y) = 0;
  virtual void pointer_moved(int x, int y) = 0;
  virtual void close_was_asked() = 0;
};

} // namespace kavo::host
