// What the sound costs: the game's music, as a fraction of one core, beside the same score played
// by the Synthesis ToolKit (STK); the worst block; the start of the engine.
//
// "core" is processor time per second of sound. One iteration is one second of sound.
#include <ADSR.h>
#include <BiQuad.h>
#include <BlitSaw.h>
#include <BlitSquare.h>
#include <FreeVerb.h>
#include <Stk.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/ratios.h"
#include "host/sound/drive.h"
#include "host/sound/engine.h"
#include "host/sound/memory_output.h"
#include "host/sound/pitch.h"
#include "host/sound/player.h"
#include "host/sound/score.h"
#include "host/sound/sequencer.h"
#include "host/sound/tools/script.h"
#include "host/sound/wavetable.h"

namespace {

using namespace kavo::sound;

constexpr int rate = 48000;
constexpr int64_t block = 512;
constexpr double block_seconds = static_cast<double>(block) / rate;

// An output that keeps nothing and renders a block at a time.
class BlockOutput final : public Output {
public:
  int open() override { return rate; }
  void start(AudioSource& source) override { source_ = &source; }
  bool is_lost() const override { return false; }
  void close() override { source_ = nullptr; }
  double fade_in_seconds() const override { return 0.0; }
  double fade_out_seconds() const override { return 0.0; }
  void wait() override { render(); }

  void render() {
    source_->render(samples_.data(), block);
    benchmark::DoNotOptimize(samples_.data());
  }

private:
  AudioSource* source_ = nullptr;
  std::vector<float> samples_ = std::vector<float>(2 * block);
};

std::vector<std::string> music_lines() {
  std::ifstream file(KAVO_MUSIC_SCRIPT);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);)
    if (line.starts_with("SOUND."))
      lines.push_back(line);
  if (lines.empty())
    throw std::runtime_error("cannot read " KAVO_MUSIC_SCRIPT);
  return lines;
}

std::string music_pattern() {
  const std::string line = music_lines().back();
  const auto from = line.find('"') + 1;
  return line.substr(from, line.rfind('"') - from);
}

// The player with the game's set-up and its music.
struct Music {
  Music() {
    auto block_output = std::make_unique<BlockOutput>();
    output = block_output.get();
    player = std::make_unique<Player>(std::move(block_output));
    player->init();
    MemoryOutput nowhere;
    for (const auto& line : music_lines())
      run_line(line, *player, nowhere);
  }

  void four_effects() const {
    player->play(5, "c2");
    player->play(4, "g4");
    player->play(3, "c3");
    player->play(5, "c1");
  }

  BlockOutput* output;
  std::unique_ptr<Player> player;
};

void report_core(benchmark::State& state) {
  using benchmark::Counter;
  state.counters["core"] = Counter(1.0, Counter::kIsIterationInvariantRate | Counter::kInvert);
}

void render_seconds(benchmark::State& state, const Music& music, int64_t effect_frames) {
  int64_t frames = 0, next_effects = 0;
  for ([[maybe_unused]] const auto _ : state) {
    for (const int64_t end = frames + rate; frames < end; frames += block) {
      if (effect_frames > 0 && frames >= next_effects) {
        music.four_effects();
        next_effects += effect_frames;
      }
      music.output->render();
    }
  }
  report_core(state);
}

void music_alone(benchmark::State& state) {
  render_seconds(state, Music(), 0);
}
BENCHMARK(music_alone)->Name("music/ours")->Unit(benchmark::kMillisecond);

void music_with_four_effects_every_60_ms(benchmark::State& state) {
  render_seconds(state, Music(), rate * 60 / 1000);
}
BENCHMARK(music_with_four_effects_every_60_ms)->Unit(benchmark::kMillisecond);

void silence(benchmark::State& state) {
  const Music music;
  music.player->note("~", 1);
  render_seconds(state, music, 0);
}
BENCHMARK(silence)->Unit(benchmark::kMillisecond);

// The same score in STK: an oscillator, an envelope and a filter for each voice and one reverb,
// sample by sample as that library works, with one note at a time where ours lets releases ring.
class StkMusic {
public:
  explicit StkMusic(const Score& score) {
    stk::Stk::setSampleRate(rate);
    melody_envelope_.setAllTimes(0.01, 0.15, 0.3, 0.25);
    bass_envelope_.setAllTimes(0.005, 0.08, 0.5, 0.08);
    set_low_pass(melody_filter_, 2000.0);
    set_low_pass(bass_filter_, 500.0);
    sequencer_.prepare(rate);
    sequencer_.set_tempo(125'000);
    sequencer_.play(&score, true);
  }

  void render() {
    for (size_t i = 0; i < samples_.size(); i += 2)
      render_frame(&samples_[i]);
    benchmark::DoNotOptimize(samples_.data());
  }

private:
  static void set_low_pass(stk::BiQuad& filter, double cutoff) {
    filter.setResonance(cutoff, 0.9, true);
  }

  void render_frame(double* out) {
    int64_t gate = 0;
    while (const ScoreNote* note = sequencer_.next_due(gate))
      strike(*note);
    sequencer_.advance(1);
    const double melody =
        0.55 * melody_filter_.tick(melody_oscillator_.tick() * melody_envelope_.tick());
    const double bass = 0.6 * bass_filter_.tick(bass_oscillator_.tick() * bass_envelope_.tick());
    const double wet = reverb_.tick(0.4 * melody);
    out[0] = 0.3 * (melody + bass + wet);
    out[1] = 0.3 * (melody + bass + reverb_.lastOut(1));
  }

  void strike(const ScoreNote& note) {
    const double frequency = frequency_of(note.note);
    if (note.voice == 0) {
      melody_oscillator_.setFrequency(frequency);
      melody_envelope_.keyOn();
    } else {
      bass_oscillator_.setFrequency(frequency);
      bass_envelope_.keyOn();
    }
  }

  Sequencer sequencer_;
  stk::BlitSquare melody_oscillator_;
  stk::BlitSaw bass_oscillator_;
  stk::ADSR melody_envelope_;
  stk::ADSR bass_envelope_;
  stk::BiQuad melody_filter_;
  stk::BiQuad bass_filter_;
  stk::FreeVerb reverb_;
  std::vector<double> samples_ = std::vector<double>(2 * block);
};

void music_in_stk(benchmark::State& state) {
  const Score score = read_score(music_pattern());
  StkMusic music(score);
  for ([[maybe_unused]] const auto _ : state)
    for (int64_t frames = 0; frames < rate; frames += block)
      music.render();
  report_core(state);
}
BENCHMARK(music_in_stk)->Name("music/STK")->Unit(benchmark::kMillisecond);

double thread_seconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// Processor time of single blocks as fractions of their duration, over two loops of the music
// with four effects every 60 ms.
void worst_block(benchmark::State& state) {
  const Music music;
  std::vector<double> times;
  for ([[maybe_unused]] const auto _ : state) {
    for (int i = 0; i < 2 * 1440; ++i) {
      if (i % 6 == 0)
        music.four_effects();
      const double start = thread_seconds();
      music.output->render();
      times.push_back(thread_seconds() - start);
    }
  }
  std::sort(times.begin(), times.end());
  state.counters["worst"] = times.back() / block_seconds;
  state.counters["median"] = times[times.size() / 2] / block_seconds;
}
BENCHMARK(worst_block)->Unit(benchmark::kMillisecond)->Iterations(1);

// So many notes at once, six to a voice, that last longer than what is rendered: one second.
void render_notes(int64_t notes) {
  constexpr int64_t notes_a_voice = 6;
  constexpr double seconds = 5;
  auto block_output = std::make_unique<BlockOutput>();
  BlockOutput& output = *block_output;
  Player player(std::move(block_output));
  player.init();
  for (int64_t note = 0; note < notes; ++note) {
    const auto voice = static_cast<double>(note / notes_a_voice);
    if (note % notes_a_voice == 0)
      player.voice(voice, "SAW", 0.001, seconds, 1, seconds);
    player.play(voice, "c" + std::to_string(note % notes_a_voice + 1));
  }
  for (int64_t frames = 0; frames < rate; frames += block)
    output.render();
}

void all_notes_at_once(benchmark::State& state) {
  for ([[maybe_unused]] const auto _ : state)
    render_notes(state.range(0));
}
BENCHMARK(all_notes_at_once)
    ->Name("notes")
    ->Arg(1)
    ->Arg(3)
    ->Arg(6)
    ->Arg(12)
    ->Arg(24)
    ->Arg(48)
    ->Unit(benchmark::kMillisecond);

// Tables and engine, as SOUND.INIT makes them.
void start_up(benchmark::State& state) {
  size_t table_bytes = 0;
  for ([[maybe_unused]] const auto _ : state) {
    const WavetableBank bank;
    const Drive drive;
    const Engine engine(rate);
    benchmark::DoNotOptimize(&engine);
    table_bytes = bank.bytes() + drive.bytes();
  }
  state.counters["table_bytes"] = static_cast<double>(table_bytes);
  state.counters["engine_bytes"] = static_cast<double>(sizeof(Engine));
}
BENCHMARK(start_up)->Unit(benchmark::kMillisecond);

} // namespace

// Fractions of a core and of a block's duration are shown in per cent.
int main(int argc, char** argv) {
  constexpr double per_cent = 100;
  constexpr double ms = 1e6;
  kavo::bench::report_counter("music/ours", "core", "%", kavo::bench::at_most(0.5), per_cent);
  kavo::bench::report_counter("music_with_four_effects_every_60_ms", "core", "%",
                              kavo::bench::at_most(1), per_cent);
  kavo::bench::report_counter("silence", "core", "%", std::nullopt, per_cent);
  kavo::bench::report_counter("worst_block", "worst", "%", kavo::bench::at_most(5), per_cent);
  kavo::bench::report_time("start_up", kavo::bench::at_most(60 * ms));
  kavo::bench::report_growth("notes", {1, 3, 6, 12, 24, 48});
  return kavo::bench::run(argc, argv);
}
