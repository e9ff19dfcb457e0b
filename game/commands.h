// Every command that the game sends to its host, one typed function each. Whole numbers travel
// as INT64, all others as FLOAT64, so the type that a call site holds is the type that is sent.
// The caller polls (TRY, DO) after each.
#pragma once

#include <concepts>
#include <cstdint>

#include "game/routine.h"
#include "game/values.h"

namespace kavo::command {

// One number of an argument list, whole or not.
class Number {
public:
  template<std::integral T>
  Number(T value) {
    slot.i64 = static_cast<int64_t>(value);
  }
  Number(double value) : tag(QOR_TAG_FLOAT64) { slot.f64 = value; }

  qor_slot slot{};
  uint32_t tag = QOR_TAG_INT64;
};

// Screen. Positions and sizes in pixels, colour components 0..255, `fill` 1 for a filled shape and
// 0 for its outline.
Out<> screen(int64_t width, int64_t height, const char* title, int64_t scale);
Out<> cls();
Out<> draw_color(Number red, Number green, Number blue);
Out<> rect(Number x, Number y, Number width, Number height, int64_t fill);
Out<> line(double x1, double y1, double x2, double y2);
Out<> text(Number x, Number y, const char* text);
Out<> screen_flip();
Out<> save_screenshot(const char* path);
Out<> gfx_close();

// Non-zero while the key is held.
Out<double> key_state(const char* key);

// For who shows a recorded game: how it stands (0 goes on, 1 has ended as recorded, 2 is not
// recorded any further, 3 has come to differ, -1 is over), the milliseconds shown and recorded, the
// frames shown. Gives how many times as fast the player wants to see it, 0 its end, below 0 no more
// of it.
Out<double> replay(int64_t standing, double milliseconds, double length, int64_t frame);

// Sound. Times in seconds, levels and gains 0..1, cutoff in hertz, tempo in beats a minute.
Out<> sound_init();
Out<> sound_bpm(int64_t tempo);
Out<> sound_voice(int64_t voice, const char* waveform, double attack, double decay, double sustain,
                  double release);
Out<> sound_filter(int64_t voice, int64_t cutoff);
Out<> sound_gain(int64_t voice, double gain);
Out<> sound_reverb(double room_size, double damping, double width, double wet);
Out<> sound_reverb_send(int64_t voice, double level);
Out<> sound_play(int64_t voice, const char* note);
Out<> sound_note(const char* pattern, int64_t loop);
Out<> sound_shutdown();

// A number in [0, 1); a negative argument seeds the generator instead.
Out<double> rnd(Number argument);

Out<> binwriter(const char* path, const char* content);

// Array results are new and share nothing with the arguments.
Out<Array> transpose(const QorArray* matrix);
Out<Array> reshape(const QorArray* values, const QorArray* shape);
Out<Array> mvins(const QorArray* rows, int64_t position, int64_t second, const QorArray* row);
Out<Array> split(const char* text, const char* separator);
Out<Array> dir(const char* path);

} // namespace kavo::command
