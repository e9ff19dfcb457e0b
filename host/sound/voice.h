// A voice: a patch (waveform and envelope) with eight note slots, so that a release rings on
// under the next note, and behind them a filter, a gain and a send to the reverb.
#pragma once

#include <array>
#include <cstdint>

#include "host/sound/dc_blocker.h"
#include "host/sound/envelope.h"
#include "host/sound/fader.h"
#include "host/sound/filter.h"
#include "host/sound/note_slot.h"
#include "host/sound/wavetable.h"

namespace kavo::sound {

struct Patch {
  Waveform waveform = Waveform::sine;
  EnvelopeTimes envelope;
};

inline constexpr double default_gain = 0.5;

class Voice {
public:
  Voice();

  void prepare(const WavetableBank& bank, int rate);

  // For the notes struck from now on; those that sound keep theirs.
  void set_patch(const Patch& patch);
  void set_cutoff(double cutoff) { filter_.set_cutoff(cutoff); }
  void set_gain(float gain);
  void set_send(float send);

  // Strikes a MIDI note: held for `gate` frames and then released, or (pluck) held for attack
  // and decay. From the seventh note at a time on, the oldest is faded within 2 ms; a note for
  // which all eight slots are still busy fading is dropped.
  void strike(int note, int64_t gate);
  void pluck(int note);

  // Lets go of every note that is held.
  void release_all();

  // Adds the next frames to `dry` and, times the send, to `to_reverb`. `scratch` holds three runs
  // of `frames` samples.
  void mix_into(float* dry, float* to_reverb, float* scratch, int64_t frames);

private:
  static constexpr size_t slot_count = 8;
  static constexpr int notes_at_a_time = 6;

  NoteSlot* slot_for_new_note();
  void make_room();
  bool is_settled() const;
  bool sum_slots(float* sum, float* scratch, int64_t frames);

  const WavetableBank* bank_ = nullptr;
  int rate_ = 48000;
  Waveform waveform_ = Waveform::sine;
  EnvelopeShape shape_;
  LowPassFilter filter_;
  DcBlocker dc_blocker_;
  Fader gain_;
  Fader send_;
  uint64_t strikes_ = 0;
  std::array<NoteSlot, slot_count> slots_;
};

} // namespace kavo::sound
