#include "tests/recording/recorded_games.h"

#include <random>
#include <stdexcept>

#include "game/program.h"
#include "game/wiring.h"
#include "runtime/clock.h"
#include "tests/fakes/fake_clock.h"
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

struct UnevenTime {
  std::mt19937_64 random{4};
  int64_t nanoseconds = 0;
};

double uneven_tick(void* context) {
  auto& time = *static_cast<UnevenTime*>(context);
  time.nanoseconds += static_cast<int64_t>(time.random() % 700);
  return static_cast<double>(time.nanoseconds) / 1e6;
}

void uneven_sleep(void* context, uint32_t milliseconds) {
  auto& time = *static_cast<UnevenTime*>(context);
  time.nanoseconds += milliseconds * int64_t{1'000'000};
  time.nanoseconds += static_cast<int64_t>(time.random() % 900'000);
}

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
  recording_host().on_frame = [&player] { recording_host().keys = player.keys(); };
  wiring.frame_ended = [] { recorder->frame_ended(); };
  static char name[] = "kavo";
  char* arguments[] = {name, nullptr};
  static_cast<void>(run_program(1, arguments));
  here.stop();
  wiring = Wiring();
  recording_host().on_frame = {};
}

void let_clock_run_unevenly() {
  static UnevenTime time;
  time = {};
  const qor_clock clock = {.tick = uneven_tick, .sleep = uneven_sleep, .context = &time};
  qor_set_clock(&clock);
}

} // namespace kavo::test
