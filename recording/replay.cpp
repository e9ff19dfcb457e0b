#include "recording/replay.h"

#include <cstring>
#include <utility>

#include "game/program.h"
#include "game/state.h"
#include "game/wiring.h"
#include "recording/fingerprint.h"
#include "recording/recorder.h"
#include "recording/state_image.h"

namespace kavo::recording {

namespace {

// The answers of a frame that are left, and what went wrong with them.
struct Deck {
  Fingerprint fingerprint;
  Frame frame;
  size_t keys = 0; // that were given
  size_t chance = 0;
  size_t clock = 0;
  size_t folders = 0;
  double last_reading = 0;
  bool is_exhausted = false;
  bool is_presented = false;
  std::function<void(double)> pause;
  double first_reading = 0;
  qor_clock clock_before{};

  void open_frame() {
    keys = chance = clock = folders = 0;
    is_exhausted = false;
  }
  bool is_used_up() const {
    return keys == frame.keys.size() && chance == frame.chance.size() &&
           clock == frame.clock.size() && folders == frame.folders.size();
  }
};

Deck deck;

// A frame that asks for more than was recorded ends here, as by an error of a command.
void run_out() {
  deck.is_exhausted = true;
  if (qor_err_code() == 0)
    qor_err_set("the recording has no answer", 1);
}

double next_of(const std::vector<double>& answers, size_t& given, double otherwise) {
  if (given < answers.size())
    return answers[given++];
  run_out();
  return otherwise;
}

bool is_save(const char* name) {
  return std::strcmp(name, "BINWRITER") == 0;
}

double answer_number(int64_t handle, const char* name, const void* slots, const uint32_t* tags,
                     int64_t count) {
  switch (deck.fingerprint.add(name, static_cast<const qor_slot*>(slots), tags, count)) {
  case Asks::key:
    return next_of(deck.frame.keys, deck.keys, 0);
  case Asks::chance:
    return next_of(deck.frame.chance, deck.chance, 0);
  default:
    return deck.is_presented && !is_save(name)
               ? qorrt_call_typed_f64(handle, name, slots, tags, count)
               : 0;
  }
}

QorArray* array_of(const std::vector<std::string>& names) {
  QorArray* array = qor_zeros(static_cast<int64_t>(names.size()));
  qor_array_set_nested(array);
  qor_array_set_string_elems(array);
  for (size_t index = 0; index < names.size(); ++index) {
    const qor_slot slot = qor_slot_of(copy(names[index].c_str()).release());
    std::memcpy(&array->data[index], &slot, sizeof slot);
  }
  return array;
}

QorArray* answer_array(int64_t handle, const char* name, const void* slots, const uint32_t* tags,
                       int64_t count) {
  if (deck.fingerprint.add(name, static_cast<const qor_slot*>(slots), tags, count) != Asks::folder)
    return qorrt_call_typed_arr(handle, name, slots, tags, count);
  if (deck.folders < deck.frame.folders.size())
    return array_of(deck.frame.folders[deck.folders++]);
  run_out();
  return nullptr;
}

double answer_tick(void*) {
  deck.last_reading = next_of(deck.frame.clock, deck.clock, deck.last_reading);
  return deck.last_reading;
}

void pass_time(void*, uint32_t milliseconds) {
  if (deck.pause)
    deck.pause(deck.last_reading + milliseconds - deck.first_reading);
}

// An error leaves the host's frames open.
void abandon_frame() {
  constexpr int64_t outermost = 1;
  qor_err_clear();
  qorrt_frame_end(qor_runtime_handle(), outermost);
}

void insert_deck() {
  deck = {};
  deck.clock_before = qor_clock_in_use();
  const qor_clock recorded = {.tick = answer_tick, .sleep = pass_time, .context = nullptr};
  qor_set_clock(&recorded);
  wiring.number = answer_number;
  wiring.array = answer_array;
}

void remove_deck() {
  qor_set_clock(&deck.clock_before);
  wiring.number = Wiring().number;
  wiring.array = Wiring().array;
}

} // namespace

Replay::Replay(const Recording& recording) : recording_(recording), left_(recording.frames) {
  ByteReader state(recording.header.state);
  set_geometry();
  set_initial_values();
  read_state(state);
  first_reading_ = LASTDROP;
  board_rows_ = ROWS;
  insert_deck();
  deck.first_reading = deck.last_reading = first_reading_;
}

Replay::~Replay() {
  remove_deck();
}

void Replay::set_presented(bool is_presented) {
  deck.is_presented = is_presented;
}

void Replay::set_pause(std::function<void(double)> pause) {
  deck.pause = std::move(pause);
}

Standing Replay::play_frame() {
  if (standing_ != Standing::playing)
    return standing_;
  if (left_.left() == 0)
    return standing_ = stand_at_end();
  try {
    codec_.read(left_, deck.frame);
  } catch (const Damaged&) {
    return standing_ = Standing::cut_off;
  }
  deck.open_frame();
  static_cast<void>(run_frame());
  return standing_ = stand_after_frame();
}

Standing Replay::stand_after_frame() {
  if (deck.is_exhausted)
    abandon_frame();
  else if (qor_err_code() != 0)
    return Standing::failed;
  if (!deck.frame.is_whole && (deck.is_exhausted || deck.is_used_up()))
    return Standing::cut_off;
  const uint64_t difference = deck.fingerprint.value() ^ deck.frame.fingerprint;
  const bool is_same =
      !deck.is_exhausted && deck.is_used_up() && (difference & deck.frame.known_fingerprint) == 0;
  if (!is_same)
    return Standing::diverged;
  note_progress();
  return Standing::playing;
}

void Replay::note_progress() {
  progress_ = progress_after(progress_, NOW - first_reading_, board_rows_);
  board_rows_ = ROWS;
}

Standing Replay::stand_at_end() {
  if (!recording_.is_complete)
    return Standing::cut_off;
  return progress_ == recording_.last ? Standing::as_recorded : Standing::diverged;
}

} // namespace kavo::recording
