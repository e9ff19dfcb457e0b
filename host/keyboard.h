// Which keys are held, told from presses and releases so that no press is missed.
//
// Each key keeps the changes (down, up, down, …) that have not been reported yet, and each
// question reports at most one of them. So a tap that begins and ends between two questions is
// answered 1 and then 0, two such taps 1, 0, 1, 0. Frames that ask for no key at all, such as those
// of an animation, keep all of it waiting. A key that a frame passes over while it asks for others
// keeps at most one unreported press: nobody wants a menu to answer ten old ones.
//
// Keys keep their order, too: when a key has more to report than one frame can take, what other
// keys did after that waits for the frames to come. Left, Left, Space within a moment is two moves
// and then the drop.
//
// A program may ask for a second key only when the first one reads 0, to let either of them do the
// same: "Left, else A". Then a tap of one and a tap of the other are two presses: a press of one
// is not reported in the frame that reports an earlier release of the other.
#pragma once

#include <cstddef>
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

  // Whether it is held by now, reported or not.
  bool is_down(int code);

  // A key that is held, and was reported so, reads 0 at the next question and then 1 again, as if
  // it had been let go and pressed in between. For any other nothing happens.
  void press_again(int code);

  void end_frame();

private:
  // Changes are numbered in the order in which they came.
  using Ordinal = uint64_t;
  static constexpr Ordinal no_ordinal = UINT64_MAX;

  struct KeyState {
    int code;
    int sources_down = 0;                 // how many physical keys hold it
    std::vector<Ordinal> unreported = {}; // presses and releases in turn
    bool was_reported_held = false;
    bool was_asked_for = false;    // since the frame began
    bool was_asked_before = false; // in the last frame that asked for any key
    // The key that was asked for right before this one when it read 0, and whether this one was
    // also asked for after it had read 1: if not, the two may be alternatives.
    std::optional<int> asked_after = {};
    bool is_independent = false;
  };
  struct Question {
    int code;
    bool was_held;
  };
  struct HeldSource {
    int source;
    int code;
  };

  KeyState& state_of(int code);
  void let_go(int code);
  void note_order(KeyState& state) const;
  bool report(KeyState& state);
  Ordinal end_of_this_frame();
  static Ordinal press_after_release(const KeyState& released, const KeyState& pressed);
  static void forget_presses(KeyState& state, Ordinal end, size_t most);

  std::vector<KeyState> keys_;
  std::vector<HeldSource> held_;
  Ordinal next_ordinal_ = 0;
  bool was_ever_asked_ = false;           // in a frame that has ended
  std::optional<Ordinal> frame_end_;      // known from the frame's first question on
  std::optional<Question> last_question_; // in this frame
};

} // namespace kavo::host
