// kavo-film: what the game looks like in motion, and how much of it flashes.
//   kavo-film tip [--calm[=share]] <folder> [seed]
//       the pictures before, during and after a tip: 0000.png, …
//   kavo-film help <file> <language> [seed]
//       the help above a game, in English (en) or German (de), as a picture
//   kavo-film recording <file> <folder> [from second] [seconds]
//       pictures and sound of a recorded game, 25 a second: 0000.png, …, sound.wav
//   kavo-film flashes [--calm[=share]] [games] [frames] [frames for a key]
//       counts the flashes of so many games of so many frames
// With --calm as a calm display shows them (host/screen/calm_display.h), by another share of 256 if
// one is named.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "game/state.h"
#include "host/screen/calm_display.h"
#include "host/screen/png.h"
#include "tests/fakes/stage.h"
#include "tests/support/temporary_folder.h"
#include "tools/film/field_of_vision.h"
#include "tools/film/flashes.h"
#include "tools/film/help_page.h"
#include "tools/film/player.h"
#include "tools/film/recorded.h"
#include "tools/film/studio.h"

namespace {

using kavo::film::Player;
using kavo::host::Canvas;
using kavo::test::stage;

// The share of a calm display; none is a display that shows what is drawn.
using Calm = std::optional<int>;

void save(const Canvas& picture, const std::filesystem::path& folder, int number) {
  std::string name = std::to_string(number);
  name.insert(0, 4 - std::min<size_t>(4, name.size()), '0');
  std::ofstream(folder / (name + ".png"), std::ios::binary) << kavo::host::png_of(picture);
}

// Plays until `watch` says that it has seen enough.
bool play(Player player, int seed, Calm calm, const std::function<bool(const Canvas&)>& watch) {
  const kavo::test::WorkingFolder scores;
  stage().calm_share = calm;
  stage().play = [&](kavo::host::EventSink& sink) { player.act(sink); };
  stage().watch = [&](const Canvas& picture) {
    if (watch(picture))
      player.leave();
  };
  const bool has_ended_well = kavo::film::run_game({}, seed);
  stage() = {};
  return has_ended_well;
}

int film_tip(const std::filesystem::path& folder, int seed, Calm calm) {
  constexpr size_t frames_before = 70;
  constexpr size_t frames = 150;
  std::filesystem::create_directories(folder);
  std::deque<Canvas> reel;
  bool has_tipped = false;
  const auto watch = [&](const Canvas& picture) {
    has_tipped = has_tipped || kavo::ROWS < kavo::COLS;
    if (reel.size() < frames)
      reel.push_back(kavo::film::copy_of(picture));
    if (!has_tipped && reel.size() > frames_before)
      reel.pop_front();
    return reel.size() == frames;
  };
  const bool has_ended_well = play(Player({.pull = 0.0}, 6), seed, calm, watch);
  int number = 0;
  for (const Canvas& picture : reel)
    save(picture, folder, number++);
  return has_ended_well ? EXIT_SUCCESS : EXIT_FAILURE;
}

void add(kavo::film::Most& sum, const kavo::film::Most& game) {
  sum.overlapping = std::max(sum.overlapping, game.overlapping);
  sum.in_step = std::max(sum.in_step, game.in_step);
}

void add(kavo::film::MostOfEach& sum, const kavo::film::MostOfEach& game) {
  add(sum.general, game.general);
  add(sum.red, game.red);
}

void add(kavo::film::FilmedPlay& sum, const kavo::film::FilmedPlay& game) {
  sum.seconds += game.seconds;
  sum.tips += game.tips;
  sum.shakes += game.shakes;
  sum.scales.resize(game.scales.size());
  for (size_t index = 0; index < game.scales.size(); ++index) {
    kavo::film::Flashing& flashing = sum.scales[index];
    add(flashing.all, game.scales[index].all);
    add(flashing.at_rest, game.scales[index].at_rest);
    flashing.too_many.overlapping += game.scales[index].too_many.overlapping;
    flashing.too_many.in_step += game.scales[index].too_many.in_step;
  }
}

void print(const kavo::film::Flashing& flashing, double scale, double minutes, Calm calm) {
  std::printf("\nin a window %g times the picture's size,          overlapping  in step\n", scale);
  std::printf("%.2f times as high as the eyes are far from it\n",
              kavo::film::height_by_distance(scale));
  const auto row = [](const char* what, const kavo::film::Most& most) {
    std::printf("  %-46s  %11d  %7d\n", what, most.overlapping, most.in_step);
  };
  row("general flashes in any second, at most", flashing.all.general);
  if (!calm)
    row("  without tips and shakes", flashing.at_rest.general);
  row("flashes of saturated red, at most", flashing.all.red);
  if (!calm)
    row("  without tips and shakes", flashing.at_rest.red);
  std::printf("  %-46s  %11.1f  %7.1f\n", "times a minute more than three general flashes",
              flashing.too_many.overlapping / minutes, flashing.too_many.in_step / minutes);
}

// How long a place that was black and is drawn white takes to be half as light as that, 8-bit
// components being what is halved.
double half_time_ms(int share) {
  constexpr double frame_ms = 16;
  const uint32_t white[] = {0xFF};
  uint32_t shown[] = {0};
  int frames = 0;
  for (; shown[0] < 128; ++frames)
    kavo::host::follow(white, shown, share);
  return frames * frame_ms;
}

int count_flashes(int games, int64_t frames, int frames_for_a_key, Calm calm) {
  // Players who look for tips, do not mind them, avoid them.
  constexpr double pulls[] = {0.4, 0.0, -0.3};
  const std::vector<double> scales{1, calm ? 2 : 0.5};
  kavo::film::FilmedPlay sum;
  const kavo::test::WorkingFolder scores;
  for (int game = 0; game < games; ++game) {
    const auto play = kavo::film::film_play(Player({.pull = pulls[game % 3]}, frames_for_a_key),
                                            game + 1, frames, scales, calm);
    if (!play.has_ended_well)
      return EXIT_FAILURE;
    add(sum, play);
  }
  const double minutes = sum.seconds / 60;
  std::printf("%.1f minutes of play, a key at most every %d frames, %.1f tips a minute, "
              "%.1f other shakes\n",
              minutes, frames_for_a_key, sum.tips / minutes, sum.shakes / minutes);
  if (calm)
    std::printf("on a calm display: %d/%d of the way with each frame, half of it in %.0f ms\n",
                *calm, kavo::host::whole_share, half_time_ms(*calm));
  for (size_t index = 0; index < scales.size(); ++index)
    print(sum.scales[index], scales[index], minutes, calm);
  return EXIT_SUCCESS;
}

int whole_number(const std::string& word) {
  int number = 0;
  const char* end = word.data() + word.size();
  const auto [rest, error] = std::from_chars(word.data(), end, number);
  if (word.empty() || rest != end || error != std::errc())
    throw std::invalid_argument('"' + word + "\" is not a whole number");
  return number;
}

int number_or(const std::vector<std::string>& words, size_t index, int otherwise) {
  return words.size() > index ? whole_number(words[index]) : otherwise;
}

// Takes the option out of the words.
Calm calm_of(std::vector<std::string>& words) {
  const std::string option = "--calm";
  const auto word = std::ranges::find_if(
      words, [&](const auto& text) { return text == option || text.starts_with(option + '='); });
  if (word == words.end())
    return {};
  const int share = *word == option ? kavo::host::CalmDisplay::usual_share
                                    : whole_number(word->substr(option.size() + 1));
  if (share < 1 || share > kavo::host::whole_share)
    throw std::invalid_argument(*word + ": the share is 1 to 256");
  words.erase(word);
  return share;
}

int run(std::vector<std::string> words) {
  const Calm calm = calm_of(words);
  const std::string what = words.empty() ? "" : words[0];
  if (what == "tip" && words.size() > 1)
    return film_tip(std::filesystem::absolute(words[1]), number_or(words, 2, 1), calm);
  if (what == "recording" && words.size() > 2) {
    kavo::film::film_recording(words[1], words[2],
                               {.from_seconds = static_cast<double>(number_or(words, 3, 0)),
                                .seconds = static_cast<double>(number_or(words, 4, 1'000'000))});
    return EXIT_SUCCESS;
  }
  if (what == "help" && words.size() > 2)
    return kavo::film::film_help_page(std::filesystem::absolute(words[1]), words[2],
                                      number_or(words, 3, 1))
               ? EXIT_SUCCESS
               : EXIT_FAILURE;
  if (what == "flashes")
    return count_flashes(number_or(words, 1, 30), number_or(words, 2, 7500),
                         number_or(words, 3, 10), calm);
  std::cerr << "usage: kavo-film tip [--calm[=share]] <folder> [seed]\n"
               "       kavo-film help <file> <language> [seed]\n"
               "       kavo-film recording <file> <folder> [from second] [seconds]\n"
               "       kavo-film flashes [--calm[=share]] [games] [frames] [frames for a key]\n";
  return 2;
}

} // namespace

int main(int argc, char** argv) {
  try {
    return run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "kavo-film: %s\n", error.what());
    return EXIT_FAILURE;
  }
}
