// What the player did: keys, controllers, the pointer, the wish to leave.
#pragma once

#include <cstdint>

namespace kavo::host {

struct Key {
  int scancode;     // which key it is, of all that there are; a platform's own number
  int code;         // what it stands for, as Platform::code_of_key tells it
  const char* name; // the platform's name for that; lives as long as the call that passes it
};

// What a thumb or finger moves on a game controller, by its place. The left stick counts as the
// cross.
enum class Control : uint8_t {
  cross_left,
  cross_right,
  cross_up,
  cross_down,
  south,
  east,
  west,
  north,
  back,
  start,
  guide,
  left_stick, // pressed, as the right one
  right_stick,
  left_shoulder,
  right_shoulder,
  left_trigger,
  right_trigger,
  right_stick_left,
  right_stick_right,
  right_stick_up,
  right_stick_down,
  paddle_1,
  paddle_2,
  paddle_3,
  paddle_4,
  touchpad,
  misc,
};
inline constexpr int control_count = static_cast<int>(Control::misc) + 1;

struct ControlPress {
  int source; // which one it is, of all controllers' and keys that there are
  Control control;
};

// Receives what the player did, in order. Coordinates are the picture's pixels.
class EventSink {
public:
  virtual ~EventSink() = default;
  virtual void key_went_down(const Key& key, bool is_repeat) = 0;
  virtual void key_went_up(const Key& key) = 0;
  virtual void control_went_down(const ControlPress& press) { static_cast<void>(press); }
  virtual void control_went_up(const ControlPress& press) { static_cast<void>(press); }
  virtual void keyboard_was_given() {}   // the keys are this program's from now on
  virtual void keyboard_was_taken() = 0; // something else has it now; no key is held any more
  virtual void picture_was_hidden() {}   // nobody can see it: minimised, on another desktop
  virtual void button_went_down(int button, int x, int y) = 0;
  virtual void button_went_up(int button, int x, int y) = 0;
  virtual void pointer_moved(int x, int y) = 0;
  virtual void close_was_asked() = 0;
};

} // namespace kavo::host
