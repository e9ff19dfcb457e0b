// The screen saver is kept away while a controller is played with, and by nothing else.
#include <SDL.h>
#include <gtest/gtest.h>

#include "host/desktop/screen_saver.h"
#include "tests/host/bridge.h"

namespace {

using kavo::host::ScreenSaver;

constexpr uint64_t patience_ms = ScreenSaver::patience_ms;

class ScreenSaverTest : public testing::Test {
protected:
  ScreenSaverTest() {
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_InitSubSystem(SDL_INIT_VIDEO);
  }
  ~ScreenSaverTest() override { SDL_QuitSubSystem(SDL_INIT_VIDEO); }

  void note(uint32_t type, int16_t axis_value, uint64_t now_ms) {
    SDL_Event event = {};
    event.type = type;
    if (type == SDL_CONTROLLERAXISMOTION)
      event.caxis.value = axis_value;
    saver.note(event, now_ms);
  }
  static bool may_start() { return SDL_IsScreenSaverEnabled() == SDL_TRUE; }

  kavo::test::Environment driver{"SDL_VIDEODRIVER", "dummy"};
  ScreenSaver saver;
};

TEST_F(ScreenSaverTest, IsKeptAwayByButtonsAndPushedSticks) {
  EXPECT_TRUE(may_start());
  note(SDL_CONTROLLERBUTTONDOWN, 0, 1000);
  EXPECT_FALSE(may_start());
  saver.allow();
  EXPECT_TRUE(may_start()) << "while the game waits it may";
  note(SDL_CONTROLLERAXISMOTION, -30'000, 2000);
  EXPECT_FALSE(may_start());
}

TEST_F(ScreenSaverTest, IsNotKeptAwayByATremblingStickOrAKey) {
  note(SDL_CONTROLLERAXISMOTION, 9000, 1000);
  note(SDL_KEYDOWN, 0, 1000);
  note(SDL_CONTROLLERBUTTONUP, 0, 1000);
  EXPECT_TRUE(may_start());
}

TEST_F(ScreenSaverTest, MayStartAMinuteAfterTheLastUse) {
  note(SDL_CONTROLLERBUTTONDOWN, 0, 1000);
  saver.allow_when_idle(1000 + patience_ms / 2);
  note(SDL_CONTROLLERBUTTONDOWN, 0, 1000 + patience_ms / 2);
  saver.allow_when_idle(1000 + patience_ms);
  EXPECT_FALSE(may_start());
  saver.allow_when_idle(1000 + patience_ms + patience_ms / 2);
  EXPECT_TRUE(may_start());
}

} // namespace
