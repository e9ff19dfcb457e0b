// A recording: any bytes, and recordings whose state, frames and header are any bytes. What can be
// read can be played, for as long as a game may take.
#include <string>

#include "game/program.h"
#include "game/state.h"
#include "recording/format.h"
#include "recording/replay.h"
#include "recording/state_image.h"
#include "tests/fuzz/input.h"

namespace {

using kavo::recording::Recording;
using kavo::recording::Standing;

const std::string& usual_state() {
  static const std::string state = [] {
    kavo::set_geometry();
    kavo::set_initial_values();
    kavo::enter_state("play");
    kavo::recording::ByteWriter out;
    kavo::recording::write_state(out);
    return out.bytes();
  }();
  return state;
}

// The usual one, in which some bytes stand at some place.
std::string state_of(kavo::fuzz::Input& input) {
  std::string state = usual_state();
  const auto place = input.value<uint16_t>();
  const auto replaced = input.value<uint8_t>();
  return place == 0 ? state : state.replace(place % state.size(), replaced % 16, input.bytes(64));
}

Recording recording_of(kavo::fuzz::Input& input) {
  Recording recording;
  recording.header.version = input.bytes(20);
  recording.header.state = state_of(input);
  recording.is_complete = true;
  recording.frames = input.bytes(100'000);
  return recording;
}

void play(const Recording& recording) {
  constexpr int most_frames = 50;
  try {
    kavo::recording::Replay replay(recording);
    for (int i = 0; i < most_frames && replay.play_frame() == Standing::playing; ++i)
      continue;
  } catch (const kavo::recording::Damaged&) {
    return;
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const int64_t handle = qorrt_init(0, nullptr);
  qor_runtime_set_handle(handle);
  kavo::fuzz::Input input(data, size);
  if (input.value<uint8_t>() != 0) {
    const Recording recording = recording_of(input);
    const Recording read = kavo::recording::parsed(kavo::recording::packed(recording));
    kavo::fuzz::require(read.frames == recording.frames && read.damage.empty(),
                        "what is written is read back");
    play(read);
  } else {
    try {
      play(kavo::recording::parsed(input.bytes(1'000'000)));
    } catch (const kavo::recording::Damaged&) {
    }
  }
  qor_err_clear();
  qor_recursion_reset_to(0);
  kavo::release_state();
  return 0;
}
