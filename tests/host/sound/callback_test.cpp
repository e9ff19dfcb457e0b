// What happens on the thread of the device: nothing that can wait. That it takes no memory is
// counted, that it makes no system call a filter of the kernel's enforces; that the library knows
// no lock no_locks_test.sh sees in its symbols.
#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <vector>

#include "host/sound/player.h"
#include "tests/host/sound/fake_output.h"
#include "tests/host/sound/studio.h"
#include "tests/host/sound/system_calls.h"
#include "tests/support/memory.h"

namespace kavo::sound {
namespace {

using kavo::test::MemoryCount;

// Everything that can be told the engine, so that the next block has something to obey.
void send_commands(Player& player, int block) {
  static const std::string pattern = music_pattern();
  if (block % 40 == 0)
    player.note(block % 80 == 0 ? std::string_view(pattern) : "c4*64, <e4 g4>*32", 1);
  player.voice(block % 16, block % 2 == 0 ? "SAW" : "SQUARE", 0.001, 0.01, 0.5, 0.05);
  player.filter(block % 16, block % 7 * 500);
  player.gain(block % 16, 0.5);
  player.reverb(0.7, 0.1 * (block % 10), 0.5, 0.5);
  player.reverb_send(block % 16, 0.5);
  player.bpm(60 + block % 300);
  for (int i = 0; i < 4; ++i)
    player.play(block % 16, "c3");
}

TEST(MemoryCount, SeesWhatIsTakenAndGivenBack) {
  const MemoryCount memory;
  ::operator delete(::operator new(16));
  EXPECT_EQ(MemoryCount::calls(), 2);
}

TEST(Callback, TakesNoMemory) {
  FakeDevice device;
  Player player(std::make_unique<FakeOutput>(device));
  player.init();
  std::vector<float> samples(1024);
  int64_t calls = 0;
  for (int block = 0; block < 1000; ++block) {
    send_commands(player, block);
    const MemoryCount memory;
    device.source->render(samples.data(), 512);
    calls += MemoryCount::calls();
  }
  EXPECT_EQ(calls, 0);
}

// The thread sanitizer makes system calls of its own.
#if !defined(__SANITIZE_THREAD__)

TEST(ForbiddenSystemCalls, EndTheProcess) {
  EXPECT_EXIT(
      {
        forbid_system_calls();
        static_cast<void>(write(STDOUT_FILENO, "", 0));
        leave(0);
      },
      testing::ExitedWithCode(system_call_status), "");
}

TEST(Callback, MakesNoSystemCall) {
  EXPECT_EXIT(
      {
        FakeDevice device;
        Player player(std::make_unique<FakeOutput>(device));
        player.init();
        std::vector<float> samples(1024);
        for (int block = 0; block < 80; ++block)
          send_commands(player, block);
        // The sanitizer of undefined behaviour looks once, by a system call, at each type it meets.
        device.source->render(samples.data(), 512);
        for (int block = 0; block < 80; ++block)
          send_commands(player, block);
        forbid_system_calls();
        for (int block = 0; block < 1000; ++block)
          device.source->render(samples.data(), 512);
        leave(0);
      },
      testing::ExitedWithCode(0), "");
}

#endif

} // namespace
} // namespace kavo::sound
