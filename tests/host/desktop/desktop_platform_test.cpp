// The desktop as a place to play in: what it offers without a display, what it leaves of itself.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "host/desktop/desktop_platform.h"
#include "tests/host/bridge.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using kavo::test::Bridge;
using kavo::test::Environment;
using kavo::test::TemporaryFolder;

// Nobody could see the game or press a key; pictures are made all the same.
TEST(WithoutADisplay, PicturesAreMadeAndKeysAreRefused) {
  const Environment driver("SDL_VIDEODRIVER", nullptr);
  const Environment x11("DISPLAY", nullptr);
  const Environment wayland("WAYLAND_DISPLAY", nullptr);
  const TemporaryFolder folder;
  Bridge bridge;
  EXPECT_EQ(bridge.error_of("SCREEN", 8, 4, "x", 1), "");
  EXPECT_EQ(bridge.error_of("SCREENFLIP"), "");
  EXPECT_EQ(bridge.error_of("GFX.SAVE_SCREENSHOT", folder / "a.png"), "");
  EXPECT_EQ(bridge.error_of("GFX.KEYSTATE", "Left"),
            "GFX.KEYSTATE: no display: start the game in a desktop session, or set DISPLAY or "
            "WAYLAND_DISPLAY (neither is set)");
}

TEST(WithoutADisplay, TheReasonIsToldWhenItCannotBeReached) {
  const Environment driver("SDL_VIDEODRIVER", nullptr);
  const Environment x11("DISPLAY", ":77777");
  const Environment wayland("WAYLAND_DISPLAY", nullptr);
  Bridge bridge;
  EXPECT_EQ(bridge.error_of("SCREEN", 8, 4, "x", 1), "");
  EXPECT_EQ(bridge.error_of("GFX.KEYSTATE", "Left"),
            "GFX.KEYSTATE: no display: start the game in a desktop session, or set DISPLAY or "
            "WAYLAND_DISPLAY (x11 not available)");
}

TEST(WithoutADisplay, ADriverThatIsNotThereIsNoReasonToPlayInvisibly) {
  const Environment driver("SDL_VIDEODRIVER", "nonsense");
  Bridge bridge;
  bridge.send("SCREEN", 8, 4, "x", 1);
  EXPECT_EQ(bridge.error_of("GFX.KEYSTATE", "Left"),
            "GFX.KEYSTATE: no display: start the game in a desktop session, or set DISPLAY or "
            "WAYLAND_DISPLAY (nonsense not available)");
}

TEST(DesktopPlatform, KnowsKeysByTheNamesOfTheLayout) {
  kavo::host::DesktopPlatform desktop;
  for (const std::string name : {"Left", "Space", "A", "9", "Keypad Enter", "F1", "Ä"})
    EXPECT_TRUE(desktop.code_of_key(name)) << name;
  for (const std::string name : {"Foo", "", "left", "a", "Left "})
    EXPECT_FALSE(desktop.code_of_key(name)) << name;
}

long threads_of_this_process() {
  return std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
}

long threads_before = 0;

void tell_threads(const char* moment) {
  std::fprintf(stderr, "%s: %ld;", moment, threads_of_this_process() - threads_before);
}

// Handlers run in the reverse order of their registration.
[[noreturn]] void exit_while_sound_plays() {
  const Environment driver("SDL_AUDIODRIVER", "dummy");
  threads_before = threads_of_this_process();
  std::atexit([] { tell_threads("at exit"); });
  Bridge bridge;
  bridge.send("SOUND.INIT");
  bridge.send("SOUND.NOTE", "c3 e3 g3", 1);
  tell_threads("playing");
  std::exit(3);
}

TEST(Process, HasNoThreadOfTheSoundLeftWhenItExitsOnAnError) {
  GTEST_FLAG_SET(death_test_style, "threadsafe"); // a new process: no test before has had a host
  EXPECT_EXIT(exit_while_sound_plays(), testing::ExitedWithCode(3), "playing: 1;at exit: 0;$");
}

TEST(Process, LooksForNoSessionBusThatNobodyNamed) {
  const Environment bus("DBUS_SESSION_BUS_ADDRESS", nullptr);
  { const Bridge bridge; }
  EXPECT_STREQ(std::getenv("DBUS_SESSION_BUS_ADDRESS"), "disabled:");
}

TEST(Process, KeepsTheSessionBusThatIsNamed) {
  const Environment bus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/run/bus");
  { const Bridge bridge; }
  EXPECT_STREQ(std::getenv("DBUS_SESSION_BUS_ADDRESS"), "unix:path=/run/bus");
}

} // namespace
