// What happens on the thread of the device: nothing that can wait.
#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <vector>

#include "host/sound/player.h"
#include "tests/host/sound/fake_output.h"
#include "tests/host/sound/forbidden_calls.h"
#include "tests/host/sound/studio.h"

namespace kavo::sound {
namespace {

TEST(ForbiddenCalls, AreSeen) {
  std::mutex mutex;
  ForbiddenCalls calls;
  ::operator delete(::operator new(16));
  EXPECT_EQ(ForbiddenCalls::memory(), 2);
  mutex.lock();
  mutex.unlock();
  EXPECT_EQ(ForbiddenCalls::locks(), 1);
  EXPECT_EQ(write(STDOUT_FILENO, "", 0), 0);
  EXPECT_EQ(ForbiddenCalls::files(), 1);
}

TEST(Callback, NeitherAllocatesNorLocksNorWrites) {
  FakeDevice device;
  Player player(std::make_unique<FakeOutput>(device));
  player.init();
  std::vector<float> samples(1024);
  const std::string pattern = music_pattern();
  int memory = 0, locks = 0, files = 0;
  for (int block = 0; block < 1000; ++block) {
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
    const ForbiddenCalls calls;
    device.source->render(samples.data(), 512);
    memory += ForbiddenCalls::memory();
    locks += ForbiddenCalls::locks();
    files += ForbiddenCalls::files();
  }
  EXPECT_EQ(memory, 0);
  EXPECT_EQ(locks, 0);
  EXPECT_EQ(files, 0);
}

} // namespace
} // namespace kavo::sound
