// Plays a recorded game again: the same program, whose questions are answered out of the recording.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "recording/answers.h"
#include "recording/format.h"

namespace kavo::recording {

// How far the replay has come, and how it stands.
enum class Standing : uint8_t {
  playing,
  as_recorded, // the recording's end, and the game stands as it did
  cut_off,     // its end, in the middle of the game: whoever recorded it was ended
  diverged,    // the game did something else than recorded, in frame progress().frames
  failed,      // an error ended the game; the error is pending
};

struct Deck;

class Replay {
public:
  // The recording must outlive it. Throws Damaged when its state is not of this game. From here to
  // the end of this object the game's state, its commands and the clock are the recording's.
  explicit Replay(const Recording& recording);
  ~Replay();
  Replay(const Replay&) = delete;
  Replay& operator=(const Replay&) = delete;

  // Whether what the game draws and sounds goes to the host, from the next frame on; else only its
  // commands for data do.
  void set_presented(bool is_presented);

  // What happens when the game sleeps: by default nothing. It is given the recorded time at which
  // it would wake, in milliseconds since the recording began.
  void set_pause(std::function<void(double)> pause);

  // The next frame of the game. Nothing happens after the last one.
  Standing play_frame();

  const Progress& progress() const { return progress_; }

private:
  Standing stand_after_frame();
  Standing stand_at_end();
  void note_progress();

  const Recording& recording_;
  ByteReader left_;
  FrameCodec codec_;
  Progress progress_;
  double first_reading_ = 0;
  int64_t board_rows_ = 0;
  Standing standing_ = Standing::playing;
  std::unique_ptr<Deck> deck_;
};

} // namespace kavo::recording
