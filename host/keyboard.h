// Which keys are held, told from presses and releases so that no press is missed.
//
// Each key keeps the changes (down, up, down, …) that have not been reported yet, and each
// question reports at most one of them. So a tap that begins and ends between two questions is
// answered 1 and then 0, two such taps 1, 0, 1, 0. A key that a whole frame did not ask for keeps
// at most one unreported press: nobody wants a menu to answer ten old ones.
//
// Keys keep their order, too: when a key has more to report than one frame can take, what other
// keys did after that waits for the frames to come. Left, Left, Space within a moment is two moves
// and then the drop.
#pragma once

#include <cstdint>
#include <optional>
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
  // Changes are numbered in the order in which they came.
  using Ordinal = uint64_t;

  struct KeyState {
    int code;
    int sources_down = 0;                 // how many physical keys hold it
    std::vector<Ordinal> unreported = {}; // presses and releases in turn
    bool was_reported_held = false;
    bool was_asked_for = false;    // since the frame began
    bool was_asked_before = false; // in the frame before this one
  };
  struct HeldSource {
    int source;
    int code;
  };

  KeyState& state_of(int code);
  void let_go(int code);
  Ordinal end_of_this_frame();
  static void forget_old_presses(KeyState& state);

  std::vector<KeyState> keys_;
  std::vector<HeldSource> held_;
  Ordinal next_ordinal_ = 0;
  std::optional<Ordinal> frame_end_; // known from the frame's first question on
};

} // namespace kavo::host
