#include "tools/film/recorded.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "game/audio/sounds.h"
#include "game/commands.h"
#include "game/program.h"
#include "game/state.h"
#include "host/screen/png.h"
#include "host/sound/memory_output.h"
#include "host/sound/tools/wav.h"
#include "recording/kept_games.h"
#include "recording/replay.h"
#include "tests/fakes/stage.h"
#include "tools/film/studio.h"

namespace kavo::film {

namespace {

using recording::Recording;
using recording::Replay;
using recording::Standing;

constexpr double ms_per_second = 1000;

// Takes pictures and sound while the recorded time passes.
class Camera {
public:
  Camera(std::filesystem::path folder, Cut cut)
      : folder_(std::move(folder)), from_ms_(cut.from_seconds * ms_per_second),
        until_ms_(from_ms_ + cut.seconds * ms_per_second) {}

  std::unique_ptr<sound::Output> make_output() {
    auto output = std::make_unique<sound::MemoryOutput>();
    output_ = output.get();
    return output;
  }
  void see(const host::Canvas& picture) { last_ = copy_of(picture); }

  void pass_until(double ms) {
    hear_until(ms);
    for (; now_ms_ < std::min(ms, until_ms_); now_ms_ += ms_per_second / pictures_a_second)
      if (now_ms_ >= from_ms_ && last_)
        save();
    is_over_ = ms >= until_ms_;
  }
  bool is_over() const { return is_over_; }

  void save_sound() const {
    const auto& all = output_->interleaved();
    const auto sample = [&](double ms) {
      return std::min(all.size(), 2 * static_cast<size_t>(ms / ms_per_second * output_->rate()));
    };
    const auto first = all.begin() + static_cast<ptrdiff_t>(sample(from_ms_));
    const auto last = all.begin() + static_cast<ptrdiff_t>(sample(std::min(until_ms_, now_ms_)));
    sound::write_wav((folder_ / "sound.wav").string(), std::vector<float>(first, last),
                     output_->rate());
  }

private:
  void hear_until(double ms) {
    const auto wanted = static_cast<int64_t>(ms / ms_per_second * output_->rate());
    if (wanted > heard_)
      output_->render(wanted - std::exchange(heard_, wanted));
  }
  void save() {
    std::string name = std::to_string(pictures_++);
    name.insert(0, 4 - std::min<size_t>(4, name.size()), '0');
    std::ofstream(folder_ / (name + ".png"), std::ios::binary) << host::png_of(*last_);
  }

  std::filesystem::path folder_;
  double from_ms_;
  double until_ms_;
  double now_ms_ = 0;
  int64_t heard_ = 0; // samples
  int pictures_ = 0;
  bool is_over_ = false;
  std::optional<host::Canvas> last_;
  sound::MemoryOutput* output_ = nullptr;
};

void play(const Recording& recording, Camera& camera) {
  Replay replay(recording);
  static_cast<void>(apply_music_switch());
  replay.set_presented(true);
  replay.set_pause([&camera](double ms) { camera.pass_until(ms); });
  Standing standing = Standing::playing;
  while (standing == Standing::playing && !camera.is_over())
    standing = replay.play_frame();
  if (standing == Standing::diverged || standing == Standing::failed)
    throw std::runtime_error("the game is not as recorded from frame " +
                             std::to_string(replay.progress().frames + 1) + " on");
}

} // namespace

void film_recording(const std::filesystem::path& file, const std::filesystem::path& folder,
                    Cut cut) {
  const Recording recording = recording::read_recording(file);
  std::filesystem::create_directories(folder);
  Camera camera(folder, cut);
  using test::stage;
  stage() = {};
  stage().make_sound_output = [&camera] { return camera.make_output(); };
  stage().watch = [&camera](const host::Canvas& picture) { camera.see(picture); };
  qor_runtime_set_handle(qorrt_init(0, nullptr));
  set_geometry();
  static_cast<void>(command::screen(SCRW, SCRH, window_title, 1));
  static_cast<void>(set_up_sound());
  play(recording, camera);
  camera.save_sound();
  qorrt_shutdown(qor_runtime_handle());
  release_state();
  stage() = {};
}

} // namespace kavo::film
