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

// The answers of a frame that are left, what went wrong with them, and what was there before.
struct Deck {
  Fingerprint fingerprint;
  Frame frame;
  size_t keys = 0; // that were given
  size_t chance = 0;
  size_t clock = 0;
  size_t folders = 0;
  double last_reading = 0;
  bool is_exhausted = false;
  // Outside of a frame, and in the host, questions and commands are not the recorded game's.
  bool is_in_frame = false;
  bool is_presented = false;
  std::function<void(double)> pause;
  double first_reading = 0;
  qor_clock clock_before = qor_clock_in_use();
  Wiring wiring_before = wiring;

  void open_frame() {
    keys = chance = clock = folders = 0;
    is_exhausted = false;
  }
  bool is_used_up() const {
    return keys == frame.keys.size() && chance == frame.chance.size() &&
           clock == frame.clock.size() && folders == frame.folders.size();
  }
};

namespace {

Deck* in_use = nullptr; // by the one replay that there is

// A frame that asks for more than was recorded ends here, as by an error of a command.
void run_out() {
  in_use->is_exhausted = true;
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

// The host may ask the same clock for itself.
template<typename Call>
auto in_host(Call call) {
  in_use->is_in_frame = false;
  const auto answer = call();
  in_use->is_in_frame = true;
  return answer;
}

double answer_number(int64_t handle, const char* name, const void* slots, const uint32_t* tags,
                     int64_t count) {
  if (!in_use->is_in_frame)
    return qorrt_call_typed_f64(handle, name, slots, tags, count);
  switch (in_use->fingerprint.add(name, static_cast<const qor_slot*>(slots), tags, count)) {
  case Asks::key:
    return next_of(in_use->frame.keys, in_use->keys, 0);
  case Asks::chance:
    return next_of(in_use->frame.chance, in_use->chance, 0);
  default:
    if (!in_use->is_presented || is_save(name))
      return 0;
    return in_host([&] { return qorrt_call_typed_f64(handle, name, slots, tags, count); });
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
  if (in_use->fingerprint.add(name, static_cast<const qor_slot*>(slots), tags, count) !=
      Asks::folder)
    return qorrt_call_typed_arr(handle, name, slots, tags, count);
  if (in_use->folders < in_use->frame.folders.size())
    return array_of(in_use->frame.folders[in_use->folders++]);
  run_out();
  return nullptr;
}

double answer_tick(void*) {
  if (!in_use->is_in_frame)
    return in_use->clock_before.tick(in_use->clock_before.context);
  in_use->last_reading = next_of(in_use->frame.clock, in_use->clock, in_use->last_reading);
  return in_use->last_reading;
}

void pass_time(void*, uint32_t milliseconds) {
  if (!in_use->is_in_frame)
    return in_use->clock_before.sleep(in_use->clock_before.context, milliseconds);
  if (in_use->pause)
    in_use->pause(in_use->last_reading + milliseconds - in_use->first_reading);
}

// An error leaves the host's frames open.
void abandon_frame() {
  constexpr int64_t outermost = 1;
  qor_err_clear();
  qorrt_frame_end(qor_runtime_handle(), outermost);
}

void put_in_use(Deck& deck) {
  in_use = &deck;
  const qor_clock recorded = {.tick = answer_tick, .sleep = pass_time, .context = nullptr};
  qor_set_clock(&recorded);
  wiring.number = answer_number;
  wiring.array = answer_array;
  wiring.frame_ended = Wiring().frame_ended;
}

void put_aside(const Deck& deck) {
  qor_set_clock(&deck.clock_before);
  wiring = deck.wiring_before;
  in_use = nullptr;
}

} // namespace

Replay::Replay(const Recording& recording)
    : recording_(recording), left_(recording.frames), deck_(std::make_unique<Deck>()) {
  ByteReader state(recording.header.state);
  set_geometry();
  set_initial_values();
  read_state(state);
  first_reading_ = LASTDROP;
  board_rows_ = ROWS;
  put_in_use(*deck_);
  deck_->first_reading = deck_->last_reading = first_reading_;
}

Replay::~Replay() {
  put_aside(*deck_);
}

void Replay::set_presented(bool is_presented) {
  deck_->is_presented = is_presented;
}

void Replay::set_pause(std::function<void(double)> pause) {
  deck_->pause = std::move(pause);
}

Standing Replay::play_frame() {
  if (standing_ != Standing::playing)
    return standing_;
  if (left_.left() == 0)
    return standing_ = stand_at_end();
  try {
    codec_.read(left_, deck_->frame);
  } catch (const Damaged&) {
    return standing_ = Standing::cut_off;
  }
  deck_->open_frame();
  deck_->is_in_frame = true;
  static_cast<void>(run_frame());
  deck_->is_in_frame = false;
  return standing_ = stand_after_frame();
}

Standing Replay::stand_after_frame() {
  if (deck_->is_exhausted)
    abandon_frame();
  else if (qor_err_code() != 0)
    return Standing::failed;
  if (!deck_->frame.is_whole && (deck_->is_exhausted || deck_->is_used_up()))
    return Standing::cut_off;
  const uint64_t difference = deck_->fingerprint.value() ^ deck_->frame.fingerprint;
  const bool is_same = !deck_->is_exhausted && deck_->is_used_up() &&
                       (difference & deck_->frame.known_fingerprint) == 0;
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
