#include "recording/recorder.h"

#include <ctime>
#include <exception>
#include <stdexcept>
#include <utility>

#include "game/state.h"
#include "game/wiring.h"
#include "recording/fingerprint.h"
#include "recording/state_image.h"
#include "recording/version.h"

namespace kavo::recording {

namespace {

constexpr double flush_interval_ms = 500;

// What the frame that runs has brought so far.
struct Tape {
  qor_clock clock{}; // that is asked
  Fingerprint fingerprint;
  Frame frame;
  bool is_in_host = false; // which may ask the same clock for itself
};

Tape tape;

// Commands without arguments have neither slots nor tags.
Asks note(const char* name, const void* slots, const uint32_t* tags, int64_t count) {
  return tape.fingerprint.add(name, static_cast<const qor_slot*>(slots), tags, count);
}

double call_number(int64_t handle, const char* name, const void* slots, const uint32_t* tags,
                   int64_t count) {
  tape.is_in_host = true;
  const double answer = qorrt_call_typed_f64(handle, name, slots, tags, count);
  tape.is_in_host = false;
  const Asks asks = note(name, slots, tags, count);
  if (asks == Asks::key)
    tape.frame.keys.push_back(answer);
  else if (asks == Asks::chance)
    tape.frame.chance.push_back(answer);
  return answer;
}

std::vector<std::string> texts_in(const QorArray* array) {
  std::vector<std::string> texts;
  for (int64_t index = 0; index < qor_array_len(array); ++index)
    texts.emplace_back(qor_array_get_str(array, index));
  return texts;
}

QorArray* call_array(int64_t handle, const char* name, const void* slots, const uint32_t* tags,
                     int64_t count) {
  tape.is_in_host = true;
  QorArray* answer = qorrt_call_typed_arr(handle, name, slots, tags, count);
  tape.is_in_host = false;
  if (note(name, slots, tags, count) == Asks::folder)
    tape.frame.folders.push_back(texts_in(answer));
  return answer;
}

double read_clock(void*) {
  const double reading = tape.clock.tick(tape.clock.context);
  if (!tape.is_in_host)
    tape.frame.clock.push_back(reading);
  return reading;
}

void sleep_by_clock(void*, uint32_t milliseconds) {
  tape.clock.sleep(tape.clock.context, milliseconds);
}

void insert_tape() {
  tape = {};
  tape.clock = qor_clock_in_use();
  const qor_clock recording = {.tick = read_clock, .sleep = sleep_by_clock, .context = nullptr};
  qor_set_clock(&recording);
  wiring.number = call_number;
  wiring.array = call_array;
}

void remove_tape() {
  qor_set_clock(&tape.clock);
  wiring.number = Wiring().number;
  wiring.array = Wiring().array;
}

std::vector<std::string> arguments_of_program() {
  std::vector<std::string> arguments = texts_in(ARGS.get());
  if (!arguments.empty())
    arguments.erase(arguments.begin()); // its name, which says where it lies
  return arguments;
}

} // namespace

Progress progress_after(const Progress& before, double milliseconds, int64_t board_rows) {
  return {.frames = before.frames + 1,
          .milliseconds = milliseconds,
          .score = SCORE,
          .rows = LINESCLEARED,
          .tips = before.tips + (ROWS != board_rows ? 1 : 0),
          .level = LEVEL};
}

Header header_of_now() {
  Header header{
      .version = game_version, .began = std::time(nullptr), .arguments = arguments_of_program()};
  for (int64_t slot = 0; slot < qor_array_len(HS_NAME.get()); ++slot)
    header.table.push_back(
        {qor_array_get_str(HS_NAME.get(), slot), number_at(HS_SCORE.get(), slot)});
  ByteWriter state;
  write_state(state);
  header.state = state.bytes();
  return header;
}

Recorder::Recorder(OpenSink open, std::function<void(const std::string&)> tell)
    : open_(std::move(open)), tell_(std::move(tell)) {}

Recorder::~Recorder() {
  stop();
}

// A game begins where the title gives way to play.
void Recorder::frame_ended() noexcept {
  try {
    const bool is_on_title = state_is("title");
    if (sink_ != nullptr) {
      take_frame();
      if (is_on_title || QUITFLAG)
        finish();
    } else if (was_on_title_ && state_is("play")) {
      begin();
    }
    was_on_title_ = is_on_title;
  } catch (const NotKept& failure) {
    give_up(failure.reason);
  } catch (const std::exception& error) {
    give_up(error.what());
  }
}

void Recorder::begin() {
  const Header header = header_of_now();
  auto sink = open_(header);
  if (sink == nullptr)
    return;
  sink->append(std::string(mark()) + header_block(header));
  codec_ = {};
  frames_.clear();
  progress_ = {};
  size_ = 0;
  board_rows_ = ROWS;
  first_reading_ = last_flush_ = LASTDROP;
  sink_ = std::move(sink);
  insert_tape();
}

void Recorder::take_frame() {
  tape.frame.fingerprint = tape.fingerprint.value();
  codec_.write(tape.frame, frames_);
  tape.frame.clear();
  note_progress();
  if (NOW - last_flush_ >= flush_interval_ms || frames_.bytes().size() > largest_block / 2)
    flush();
}

void Recorder::note_progress() {
  progress_ = progress_after(progress_, NOW - first_reading_, board_rows_);
  board_rows_ = ROWS;
}

void Recorder::flush() {
  last_flush_ = NOW;
  size_ += frames_.bytes().size();
  if (size_ > largest_recording / 2)
    throw std::runtime_error("the game has become longer than a recording can be");
  sink_->append(frames_block(progress_, frames_.bytes()));
  frames_.clear();
}

void Recorder::finish() {
  remove_tape();
  auto sink = std::move(sink_);
  if (!frames_.bytes().empty())
    sink->append(frames_block(progress_, frames_.bytes()));
  frames_.clear();
  sink->append(end_block(progress_));
  sink->finish();
}

void Recorder::stop() noexcept {
  if (sink_ == nullptr)
    return;
  try {
    if (!tape.frame.clock.empty()) {
      tape.frame.is_whole = false;
      tape.frame.fingerprint = tape.fingerprint.value();
      codec_.write(tape.frame, frames_);
      tape.frame.is_whole = true;
    }
    finish();
  } catch (const NotKept& failure) {
    give_up(failure.reason);
  } catch (const std::exception& error) {
    give_up(error.what());
  }
}

void Recorder::give_up(const std::string& reason) noexcept {
  if (sink_ != nullptr)
    remove_tape();
  sink_.reset();
  if (!std::exchange(has_told_, true))
    tell_("this game is not recorded: " + reason);
}

} // namespace kavo::recording
