#include "tests/recording/recorded_games.h"

#include <random>
#include <stdexcept>

#include "game/program.h"
#include "game/wiring.h"
#include "tests/fakes/recording_host.h"

namespace kavo::test {

namespace {

class ShelfSink final : public recording::Sink {
public:
  ShelfSink(Shelf& shelf, size_t place) : shelf_(shelf), place_(place) {}

  void append(const std::string& bytes) override {
    std::string& file = shelf_.files[place_];
    const int64_t most = shelf_.bytes_before_failure;
    if (most >= 0 && std::ssize(file) + std::ssize(bytes) > most)
      throw std::runtime_error("the shelf is full");
    file += bytes;
  }
  void finish() override {
    ++shelf_.finished;
    shelf_.on_finish();
  }

private:
  Shelf& shelf_;
  size_t place_;
};

recording::Recorder* recorder = nullptr;
Shelf* shelf_in_use = nullptr;

} // namespace

recording::OpenSink Shelf::opener() {
  return [this](const recording::Header&) {
    files.emplace_back();
    on_begin();
    return std::make_unique<ShelfSink>(*this, files.size() - 1);
  };
}

void play_and_record(Player& player, Shelf& shelf, std::vector<std::string>& told) {
  recording::Recorder here(shelf.opener(),
                           [&told](const std::string& line) { told.push_back(line); });
  recorder = &here;
  shelf_in_use = &shelf;
  recording_host().on_frame = [&player] { recording_host().keys = player.keys(); };
  wiring.frame_ended = [] {
    shelf_in_use->after_frame();
    recorder->frame_ended();
  };
  static char name[] = "kavo";
  char* arguments[] = {name, nullptr};
  static_cast<void>(run_program(1, arguments));
  here.stop();
  wiring = Wiring();
  recording_host().on_frame = {};
}

struct PlayersClock::Time {
  bool is_uneven;
  std::mt19937_64 random{4};
  int64_t nanoseconds = 0;

  void pass(int64_t duration, uint64_t noise) {
    nanoseconds += duration + (is_uneven ? static_cast<int64_t>(random() % noise) : 0);
  }
  static double tick(void* context) {
    auto& time = *static_cast<Time*>(context);
    time.pass(0, 700);
    return static_cast<double>(time.nanoseconds) / 1e6;
  }
  static void sleep(void* context, uint32_t milliseconds) {
    static_cast<Time*>(context)->pass(milliseconds * int64_t{1'000'000}, 900'000);
  }
};

PlayersClock::PlayersClock(bool is_uneven)
    : time_(std::make_unique<Time>(Time{.is_uneven = is_uneven})), before_(qor_clock_in_use()) {
  const qor_clock clock = {.tick = Time::tick, .sleep = Time::sleep, .context = time_.get()};
  qor_set_clock(&clock);
}

PlayersClock::~PlayersClock() {
  qor_set_clock(&before_);
}

} // namespace kavo::test
