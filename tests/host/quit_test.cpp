// SIGINT and SIGTERM end the program in order, at the end of the frame in which they arrive.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "tests/host/bridge.h"

namespace {

using kavo::test::Bridge;

void say_quit(const char* name, const int64_t*, const uint32_t*, int64_t) {
  std::fprintf(stderr, "%s;", name);
}

// A loop that gets a signal inside of its third frame and goes on within that frame.
[[noreturn]] void play_until(int signal) {
  Bridge bridge;
  qorrt_set_event_dispatcher(bridge.handle(), say_quit);
  bridge.send("SCREEN", 8, 4, "x", 1);
  for (int frame = 1; frame <= 5; ++frame) {
    const int64_t token = qorrt_frame_begin(bridge.handle());
    if (frame == 3)
      std::raise(signal);
    bridge.send("SCREENFLIP");
    std::fprintf(stderr, "%d;", frame);
    qorrt_frame_end(bridge.handle(), token);
  }
  std::_Exit(99);
}

TEST(Signals, EndTheProgramInOrderAtTheEndOfTheFrame) {
  EXPECT_EXIT(play_until(SIGINT), testing::ExitedWithCode(0), "1;2;QUIT;3;$");
  EXPECT_EXIT(play_until(SIGTERM), testing::ExitedWithCode(0), "1;2;QUIT;3;$");
}

TEST(Signals, EndTheProgramAtAFlipOutsideOfAnyFrame) {
  EXPECT_EXIT(
      {
        Bridge bridge;
        bridge.send("SCREEN", 8, 4, "x", 1);
        std::raise(SIGINT);
        std::fputs("before;", stderr);
        bridge.send("SCREENFLIP");
        std::_Exit(99);
      },
      testing::ExitedWithCode(0), "before;$");
}

TEST(Signals, WaitForTheOutermostFrame) {
  EXPECT_EXIT(
      {
        Bridge bridge;
        const int64_t outer = qorrt_frame_begin(bridge.handle());
        const int64_t inner = qorrt_frame_begin(bridge.handle());
        std::raise(SIGTERM);
        qorrt_frame_end(bridge.handle(), inner);
        std::fputs("inner;", stderr);
        qorrt_frame_end(bridge.handle(), outer);
        std::_Exit(99);
      },
      testing::ExitedWithCode(0), "inner;$");
}

TEST(Signals, AreOneWishWhenTheyComeTogether) {
  EXPECT_EXIT(
      {
        const Bridge bridge;
        const int64_t frame = qorrt_frame_begin(bridge.handle());
        for (const int signal : {SIGTERM, SIGTERM, SIGINT, SIGINT})
          std::raise(signal);
        std::fputs("alive;", stderr);
        qorrt_frame_end(bridge.handle(), frame);
        std::_Exit(99);
      },
      testing::ExitedWithCode(0), "alive;$");
}

void hang_under(int signal) {
  const Bridge bridge;
  for (;;)
    std::raise(signal);
}

TEST(Signals, StopAProgramThatHangs) {
  EXPECT_EXIT(hang_under(SIGINT), testing::KilledBySignal(SIGINT), "");
  EXPECT_EXIT(hang_under(SIGTERM), testing::KilledBySignal(SIGTERM), "");
}

// An animation shows its pictures within one frame.
TEST(Signals, EndAnAnimationAtItsSecondPicture) {
  EXPECT_EXIT(
      {
        Bridge bridge;
        bridge.send("SCREEN", 8, 4, "x", 1);
        qorrt_frame_begin(bridge.handle());
        bridge.send("SCREENFLIP");
        std::raise(SIGTERM);
        for (int picture = 1; picture <= 12; ++picture) {
          std::fprintf(stderr, "%d;", picture);
          bridge.send("SCREENFLIP");
        }
        std::_Exit(99);
      },
      testing::ExitedWithCode(0), "^1;2;$");
}

TEST(Signals, OneThatTheParentIgnoresStaysIgnored) {
  EXPECT_EXIT(
      {
        std::signal(SIGINT, SIG_IGN);
        const Bridge bridge;
        std::raise(SIGINT);
        qorrt_frame_end(bridge.handle(), qorrt_frame_begin(bridge.handle()));
        std::_Exit(7);
      },
      testing::ExitedWithCode(7), "");
}

TEST(Signals, HaveTheirUsualEffectAfterShutdown) {
  EXPECT_EXIT(
      {
        { const Bridge bridge; }
        std::raise(SIGTERM);
      },
      testing::KilledBySignal(SIGTERM), "");
}

TEST(Signals, WhatIsBufferedForOutputIsNotLost) {
  EXPECT_EXIT(
      {
        std::setvbuf(stderr, nullptr, _IOFBF, 4096);
        Bridge bridge;
        bridge.send("SCREEN", 8, 4, "x", 1);
        std::fputs("kept", stderr);
        std::raise(SIGINT);
        bridge.send("SCREENFLIP");
        std::_Exit(99);
      },
      testing::ExitedWithCode(0), "kept");
}

} // namespace
