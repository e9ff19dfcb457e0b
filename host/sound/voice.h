// A voice: a patch (waveform and envelope) and its notes, eight at a time, so that a release
// rings on under the next note, and behind them a filter, a gain and a send to the reverb.
#pragma once

#include <array>
#include <cstdint>

#include "host/sound/dc_blocker.h"
#include "host/sound/drive.h"
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

  // With `drive`, low notes get its overtones; it is borrowed, like the bank.
  void prepare(const WavetableBank& bank, const Drive* drive, int rate);

  // For the notes struck from now on; those that sound keep theirs.
  void set_patch(const Patch& patch);
  void set_cutoff(double cutoff) { filter_.set_cutoff(cutoff); }
  void set_gain(float gain);
  void set_send(float send);
  // Whatever is on its way to another value arrives at once.
  void settle();

  // Strikes a MIDI note: held for `gate` frames and then released, or (pluck) held for attack
  // and decay. From the ninth note at a time on, the oldest is faded within 2 ms, or sooner when
  // more than eight are on their way out.
  void strike(int note, int64_t gate);
  void pluck(int note);

  // Lets go of every note that is held.
  void release_all();

  // Where a run of a voice goes to: added to, `frames` samples each. Presence is how loud the notes
  // are meant to be, their envelopes times the gain.
  struct Mix {
    float* dry;
    float* to_reverb; // times the send
    float* presence;
    float* scratch; // of four runs
  };

  void mix_into(const Mix& mix, int64_t frames);

private:
  static constexpr int notes_at_a_time = 8;
  static constexpr size_t slot_count = 16; // as many again may be on their way out

  void make_room();
  NoteSlot& slot_for_new_note();
  bool is_idle() const;
  bool is_settled() const;
  bool sum_slots(float* sum, float* levels, float* scratch, int64_t frames);

  const WavetableBank* bank_ = nullptr;
  const Drive* drive_ = nullptr;
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
