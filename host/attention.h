// Whether the player is with the game. It waits when the player goes elsewhere, and goes on when
// they come back and say so; a game that nobody ever came to waits for nobody.
#pragma once

namespace kavo::host {

class Attention {
public:
  void come() {
    has_come_ = true;
    is_away_ = false;
  }
  void go() {
    if (has_come_ && is_waited_for_)
      is_waiting_ = true;
    is_away_ = true;
  }
  // A key or a click of theirs.
  void act() { is_waiting_ = false; }

  // Whether the game waits at all.
  void set_waited_for(bool is_waited_for) {
    is_waited_for_ = is_waited_for;
    is_waiting_ = is_waiting_ && is_waited_for;
  }

  bool is_waiting() const { return is_waiting_; }
  bool is_away() const { return is_away_; }

private:
  bool is_waited_for_ = false;
  bool has_come_ = false;
  bool is_away_ = false;
  bool is_waiting_ = false;
};

} // namespace kavo::host
