// A player who goes elsewhere in the middle of an animation: it stands still, and goes on where it
// was.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "game/state.h"
#include "tests/fakes/stage.h"
#include "tests/support/temporary_folder.h"
#include "tools/film/player.h"
#include "tools/film/studio.h"

namespace kavo::film {
namespace {

using host::EventSink;
using kavo::test::key_named;
using kavo::test::stage;

// Looks on from picture to picture, and takes the keyboard away at the second one of a frame: of an
// animation, which holds its frame up.
class Distraction {
public:
  explicit Distraction(Player& player) : player_(player) {
    stage().play = [this](EventSink& sink) { look(sink); };
    stage().wait = [this](EventSink& sink) { come_back(sink); };
  }
  ~Distraction() { stage() = {}; }
  Distraction(const Distraction&) = delete;
  Distraction& operator=(const Distraction&) = delete;

  int tips = 0; // in which it stood still and went on
  int clears = 0;
  int standstills = 0;

private:
  void look(EventSink& sink) {
    if (NOW != frame_) {
      count_the_last_one();
      pictures_ = 0;
    }
    frame_ = NOW;
    ++pictures_;
    if (!has_come_)
      sink.keyboard_was_given();
    has_come_ = true;
    if (pictures_ == 2 && chars(GSTATE$) == std::string("play"))
      return go_away(sink);
    player_.act(sink);
    if (tips > 0 && clears > 0)
      player_.leave();
  }

  void go_away(EventSink& sink) {
    columns_ = COLS;
    went_away_at_ = pictures_;
    sink.keyboard_was_taken();
  }

  // The key that goes on is not the game's.
  void come_back(EventSink& sink) {
    static const std::string key = "P";
    ++standstills;
    sink.keyboard_was_given();
    sink.key_went_down(key_named(key), false);
    sink.key_went_up(key_named(key));
  }

  // An animation that went on shows more pictures in its frame.
  void count_the_last_one() {
    if (!went_away_at_)
      return;
    EXPECT_GT(pictures_, *went_away_at_) << "it did not go on";
    EXPECT_EQ(chars(GSTATE$), std::string("play")) << "its key was the game's";
    ++(COLS == columns_ ? clears : tips);
    went_away_at_.reset();
  }

  Player& player_;
  double frame_ = -1;
  int pictures_ = 0;
  int64_t columns_ = 0;
  bool has_come_ = false;
  std::optional<int> went_away_at_;
};

TEST(APlayerWhoGoesElsewhere, FindsBothAnimationsWhereTheyWere) {
  const kavo::test::WorkingFolder scores;
  const kavo::test::TemporaryFolder settings;
  stage() = {};
  stage().settings_folder = settings.path();
  Player player({.pull = 1}, 3);
  Distraction distraction(player);
  EXPECT_TRUE(run_game({}, 1));
  EXPECT_GT(distraction.tips, 0);
  EXPECT_GT(distraction.clears, 0);
  EXPECT_GE(distraction.standstills, distraction.tips + distraction.clears);
}

} // namespace
} // namespace kavo::film
