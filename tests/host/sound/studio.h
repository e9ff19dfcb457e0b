// A player that plays into memory, told what to do by the lines of a script.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/sound/memory_output.h"
#include "host/sound/player.h"

namespace kavo::sound {

class Studio {
public:
  explicit Studio(int rate = 48000, int64_t block = 512);

  // Lines as kavo-render reads them.
  void run(const std::string& lines);

  // The game's set-up and its music, without letting any of it sound.
  void set_up_music();

  void render(int64_t frames) { output_->render(frames); }
  // The last of what was rendered comes out.
  void finish() { output_->finish(); }

  const std::vector<float>& interleaved() const { return output_->interleaved(); }
  std::vector<float> left() const { return channel(0); }
  std::vector<float> right() const { return channel(1); }
  int rate() const { return output_->rate(); }
  Player& player() { return *player_; }

private:
  std::vector<float> channel(size_t first) const;

  MemoryOutput* output_;
  std::unique_ptr<Player> player_;
};

// The lines of the game's set-up, up to the last SOUND command, and its pattern alone.
std::string music_script();
std::string music_pattern();

inline constexpr int64_t music_loop = 737'280; // frames at 48 kHz

} // namespace kavo::sound
