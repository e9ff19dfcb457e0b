// Who plays in long tests, benchmarks and the soak: a clumsy player who presses anything, a greedy
// one who searches the best place for each piece, and a visitor who goes through all the screens.
#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <set>
#include <string>

namespace kavo::test {

using Keys = std::set<std::string>;

// Somebody at the keyboard, asked once a frame which keys are held in it.
class Player {
public:
  Player() = default;
  virtual ~Player() = default;
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  virtual Keys keys() = 0;
};

// Where a piece is to go: quarter turns first, then to this column of its matrix, then down.
struct Placement {
  int turns;
  int64_t column;
};

// The placement of the falling piece that leaves the flattest board with the fewest holes.
Placement best_placement();

// Any turn, any column.
Placement random_placement(std::mt19937_64& random);

// Turns and moves the falling piece as far as it goes, and drops it.
void drop_at(const Placement& placement);

// Presses the keys of play at random.
class ClumsyPlayer final : public Player {
public:
  explicit ClumsyPlayer(uint64_t seed) : random_(seed) {}
  Keys keys() override;

private:
  std::mt19937_64 random_;
};

// Steers each piece to its best placement, a key at a time, and drops it there.
class GreedyPlayer final : public Player {
public:
  Keys keys() override;

private:
  void plan();

  Placement wanted_{};
  int64_t last_row_ = -1; // of the piece when a key was last pressed
  int patience_ = 0;      // presses left before the piece is dropped where it is
};

// Starts a game from the title, plays it clumsily or greedily by turns, pauses now and then, enters
// a name, visits the options, starts again; after `frames` frames it leaves the program. Every key
// is let go for a frame before the next is pressed.
class Visitor final : public Player {
public:
  Visitor(uint64_t seed, int64_t frames);
  Keys keys() override;

  // The frames are over.
  void leave() { last_frame_ = frame_; }

  int64_t frames() const { return frame_; }
  int64_t games() const { return games_; }
  int64_t names() const { return names_; } // entered so far
  const std::set<std::string>& screens() const { return screens_; }

private:
  void note_screen(const std::string& screen);
  void begin_game();
  Keys press();
  Keys press_on_title();
  Keys press_in_play();
  Keys press_in_entry();

  std::mt19937_64 random_;
  int64_t last_frame_;
  int64_t frame_ = 0;
  int64_t games_ = 0;
  int64_t names_ = 0;
  std::string screen_; // that was last seen
  std::set<std::string> screens_;
  std::unique_ptr<Player> player_;
};

} // namespace kavo::test
