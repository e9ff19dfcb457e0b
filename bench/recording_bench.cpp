// What recording a game costs: the time of a frame, of play and of the busiest one, beside the same
// frame without, and what a minute takes.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <string>

#include "bench/ratios.h"
#include "bench/storm.h"
#include "game/shell/input.h"
#include "game/state.h"
#include "game/wiring.h"
#include "recording/compression.h"
#include "recording/recorder.h"

namespace {

using kavo::recording::Recorder;

constexpr int frames_a_minute = 3600; // of 16.7 ms

// Keeps what a file would, and counts.
class Counter final : public kavo::recording::Sink {
public:
  explicit Counter(std::string& bytes) : bytes_(bytes) {}
  void append(const std::string& bytes) override { bytes_ += bytes; }
  void finish() override {}

private:
  std::string& bytes_;
};

// A recorder that is in the middle of a game.
class Recorded {
public:
  Recorded() {
    kavo::enter_state("title");
    recorder_.frame_ended();
    kavo::enter_state("play");
    recorder_.frame_ended();
    bytes_.clear();
  }
  void frame_ended() { recorder_.frame_ended(); }
  const std::string& bytes() const { return bytes_; }

private:
  std::string bytes_;
  Recorder recorder_{
      [this](const kavo::recording::Header&) { return std::make_unique<Counter>(bytes_); },
      [](const std::string&) {}};
};

void play_frame() {
  kavo::NOW = qor_tick();
  static_cast<void>(kavo::poll_keys());
  kavo::bench::draw_frame();
}

void play_storm_frame() {
  kavo::bench::keep_storm_alive();
  play_frame();
}

void clear_the_air() {
  kavo::bench::keep_effects(0);
  kavo::SHAKE = kavo::LIGHTNING = kavo::FLASH = kavo::COMBOFLASH = kavo::SHOCKLIFE = 0;
  for (int64_t row = 0; row < 9; ++row)
    for (int64_t column = 0; column < kavo::COLS; ++column)
      kavo::put_cell(kavo::BOARD.get(), row, column, 0.0);
}

// Of this thread's own, so that what else the machine does counts for neither.
double microseconds() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}

constexpr int frames_of_a_batch = 20;

template<typename Frame>
double batch_us(Frame frame) {
  const double start = microseconds();
  for (int i = 0; i < frames_of_a_batch; ++i)
    frame();
  return (microseconds() - start) / frames_of_a_batch;
}

// The shortest of many batches with and without by turns, so that both meet the same machine.
void measure_time(benchmark::State& state, void (*frame)()) {
  double plain_us = 1e9;
  double recorded_us = 1e9;
  for ([[maybe_unused]] const auto _ : state) {
    plain_us = std::min(plain_us, batch_us(frame));
    Recorded recorded;
    recorded_us = std::min(recorded_us, batch_us([&] {
                             frame();
                             recorded.frame_ended();
                           }));
  }
  state.counters["plain_us"] = plain_us;
  state.counters["extra_us"] = recorded_us - plain_us;
}

void measure_size(benchmark::State& state, void (*frame)()) {
  Recorded recorded;
  for (int i = 0; i < frames_a_minute; ++i) {
    frame();
    recorded.frame_ended();
  }
  state.counters["minute_kB"] = static_cast<double>(recorded.bytes().size()) / 1000;
  state.counters["compressed_kB"] =
      static_cast<double>(kavo::recording::compressed(recorded.bytes()).size()) / 1000;
}

void measure(benchmark::State& state, void (*frame)()) {
  measure_time(state, frame);
  measure_size(state, frame);
}

void Play(benchmark::State& state) {
  clear_the_air();
  measure(state, play_frame);
}
void Storm(benchmark::State& state) {
  kavo::bench::raise_storm();
  measure(state, play_storm_frame);
}

BENCHMARK(Play)->Unit(benchmark::kMillisecond);
BENCHMARK(Storm)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
  kavo::bench::start_storm();
  for (const char* name : {"Play", "Storm"}) {
    const bool is_storm = std::string(name) == "Storm";
    kavo::bench::report_counter(name, "extra_us", "µs a frame",
                                kavo::bench::at_most(is_storm ? 10 : 2));
    kavo::bench::report_counter(name, "minute_kB", "kB a minute");
    kavo::bench::report_counter(name, "compressed_kB", "kB a minute, compressed");
  }
  return kavo::bench::run(argc, argv);
}
