#include "tests/recording/scripted_games.h"

#include <stdexcept>
#include <utility>

#include "game/state.h"
#include "recording/format.h"
#include "tests/fakes/recording_host.h"
#include "tests/recording/recorded_games.h"
#include "tests/support/temporary_folder.h"

namespace kavo::test {

namespace {

// Puts every piece as far to one side as it goes: the board tips to that side.
class Leaner final : public Player {
public:
  explicit Leaner(const char* side) : side_(side) {}
  Keys keys() override { return ++presses_ % 7 == 0 ? Keys{"Space"} : Keys{side_}; }

private:
  const char* side_;
  int presses_ = 0;
};

// One game from the title to its name and away; every key is let go for a frame.
class Scripted final : public Player {
public:
  explicit Scripted(const ScriptedGame& game) : game_(game), player_(game.player()) {}

  Keys keys() override {
    if (++frame_ % 2 != 0)
      return {};
    if (state_is("title"))
      return {std::exchange(has_begun_, true) ? "Escape" : "Space"};
    if (state_is("enter"))
      return enter_name();
    return frame_ < game_.careful_frames ? player_->keys() : Keys{"Space"};
  }

private:
  // B and then its rank: A to E, or what comes before A.
  Keys enter_name() {
    constexpr const char* way[] = {"Up", "Right", "Down", "Up", "Up", "Right", "Left"};
    const int64_t step = letters_++;
    return {step < game_.rank + 2 ? way[step] : "Return"};
  }

  const ScriptedGame& game_;
  std::unique_ptr<Player> player_;
  int64_t frame_ = 0;
  int64_t letters_ = 0;
  bool has_begun_ = false;
};

// So many scores that nobody reaches, and rows that were cleared before.
void prepare(const ScriptedGame& game) {
  constexpr double out_of_reach = 10'000'000;
  for (int64_t slot = 0; slot < game.rank; ++slot)
    qor_array_set(HS_SCORE.get(), slot, out_of_reach - static_cast<double>(slot));
  LINESCLEARED = game.rows_before;
  LEVEL = LINESCLEARED / 10 + 1;
}

template<typename T, typename... Arguments>
std::function<std::unique_ptr<Player>()> player(Arguments... arguments) {
  return [arguments...] { return std::make_unique<T>(arguments...); };
}

std::vector<ScriptedGame> make_games() {
  const auto clumsy = player<ClumsyPlayer>(uint64_t{3});
  const auto greedy = player<GreedyPlayer>();
  return {{.name = "left", .seed = 1, .player = player<Leaner>("Left"), .careful_frames = 5000},
          {.name = "right",
           .seed = 2,
           .player = player<Leaner>("Right"),
           .careful_frames = 5000,
           .rank = 1},
          {.name = "power-ups", .seed = 3, .player = greedy, .careful_frames = 700, .rank = 2},
          {.name = "fast",
           .seed = 4,
           .player = greedy,
           .careful_frames = 600,
           .rank = 3,
           .rows_before = 190},
          {.name = "clumsy", .seed = 5, .player = clumsy, .careful_frames = 900, .rank = 4},
          {.name = "nameless", .seed = 6, .player = clumsy, .careful_frames = 300, .rank = 5},
          {.name = "system-clock",
           .seed = 7,
           .player = clumsy,
           .careful_frames = 60,
           .has_uneven_clock = true}};
}

} // namespace

const std::vector<ScriptedGame>& scripted_games() {
  static const std::vector<ScriptedGame> games = make_games();
  return games;
}

std::string record(const ScriptedGame& game) {
  const WorkingFolder folder;
  recording_host().reset();
  recording_host().is_discarding = true;
  recording_host().random_seed = game.seed;
  const PlayersClock time(game.has_uneven_clock);
  Shelf shelf;
  bool is_prepared = false;
  shelf.after_frame = [&] {
    if (state_is("play") && !std::exchange(is_prepared, true))
      prepare(game);
  };
  std::vector<std::string> told;
  Scripted player(game);
  play_and_record(player, shelf, told);
  if (shelf.files.size() != 1 || !told.empty())
    throw std::runtime_error(game.name + " was not recorded");
  recording::Recording recording = recording::parsed(shelf.files.front());
  recording.header.began = 0; // the same bytes whenever it is made
  return recording::packed(recording, false);
}

} // namespace kavo::test
