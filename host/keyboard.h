// Which keys are held, told from presses and releases so that no press is missed.
//
// Each key keeps the changes (down, up, down, …) that have not been reported yet, and each
// question reports at most one of them. So a tap that begins and ends between two questions is
// answered 1 and then 0, two such taps 1, 0, 1, 0. A key that a whole frame did not ask for keeps
// at most one unreported press: nobody wants a menu to answer ten old ones.
#pragma once

#include <cstdint>
#include <vector>

namespace kavo::host {

class Keyboard {
public:
  // `source` is the physical key, `code` what it stands for; several sources may stand for one
  // code, which is held while any of them is. A source that is down already only repeats itself.
  void key_down(int source, int code);
  // For a source that is not down nothing happens.
  void key_up(int source);
  void release_all();

  // 1 while held; takes one change off the unreported ones.
  bool is_held(int code);

  void end_frame();

private:
  struct KeyState {
    int code;
    int sources_down;       // how many physical keys hold it
    int unreported_changes; // presses and releases in turn
    bool was_reported_held;
    bool was_asked_for; // since the frame began
  };
  struct HeldSource {
    int source;
    int code;
  };

  KeyState& state_of(int code);
  void let_go(int code);
  static void forget_old_presses(KeyState& state);

  std::vector<KeyState> keys_;
  std::vector<HeldSource> held_;
};

} // namespace kavo::host
