// Records the games that are played: each from its first frame to its last, whatever the host.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "recording/answers.h"
#include "recording/format.h"
#include "recording/sink.h"

namespace kavo::recording {

// A new sink for a game that begins; null where none is wanted. May throw as a sink does.
using OpenSink = std::function<std::unique_ptr<Sink>(const Header&)>;

// One object at a time watches the program's frames (game/wiring.h). A recording that cannot be
// kept is told once; play goes on.
class Recorder {
public:
  Recorder(OpenSink open, std::function<void(const std::string&)> tell);
  // Ends what is being recorded, its unfinished frame included.
  ~Recorder();
  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;

  // After each frame of the program: begins, goes on, ends.
  void frame_ended() noexcept;

  // The program ends, or the player does not want it any more.
  void stop() noexcept;

  bool is_recording() const { return sink_ != nullptr; }

private:
  void begin();
  void take_frame();
  void note_progress();
  void flush();
  void finish();
  void give_up(const std::string& reason) noexcept;

  OpenSink open_;
  std::function<void(const std::string&)> tell_;
  std::unique_ptr<Sink> sink_;
  FrameCodec codec_;
  ByteWriter frames_;
  Progress progress_;
  double first_reading_ = 0;
  double last_flush_ = 0;
  size_t size_ = 0; // of all frames so far
  int64_t board_rows_ = 0;
  bool was_on_title_ = false;
  bool has_told_ = false;
};

// How the game stands after a frame more; a tip is seen by the board's rows before that frame.
Progress progress_after(const Progress& before, double milliseconds, int64_t board_rows);

// The header of a recording that begins now.
Header header_of_now();

} // namespace kavo::recording
