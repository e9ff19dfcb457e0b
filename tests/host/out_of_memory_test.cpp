// Memory that runs out at any moment: no operation lets an exception out, and each leaves an error
// that says so.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tests/host/bridge.h"
#include "tests/support/memory.h"

namespace kavo::test {
namespace {

// Does it with no block, with one, with two, …, until the memory is enough. The errors that it
// left, each of them once in a row.
std::vector<std::string> errors_when_memory_is_scarce(const std::function<void()>& action) {
  constexpr int64_t more_than_enough = 1000;
  std::vector<std::string> errors;
  for (int64_t blocks = 0; blocks < more_than_enough; ++blocks) {
    bool has_run_out = false;
    {
      const ScarceMemory scarce(blocks);
      action();
      has_run_out = ScarceMemory::has_run_out();
    }
    const char* error = qorrt_last_error(0);
    const std::string text = error == nullptr ? "" : error;
    qorrt_clear_last_error(0);
    if (!has_run_out)
      return errors;
    if (errors.empty() || errors.back() != text)
      errors.push_back(text);
  }
  ADD_FAILURE() << "it never has enough";
  return errors;
}

using Errors = std::vector<std::string>;

TEST(OutOfMemory, IsAnErrorOfTheCommand) {
  Bridge bridge;
  bridge.send("SCREEN", 8, 4, "x", 1);
  const auto fails_like = [&](const char* name, const CommandArguments& arguments) {
    return errors_when_memory_is_scarce([&] {
      qorrt_call_typed_f64(bridge.handle(), name, arguments.slots(), arguments.tags(),
                           arguments.count());
    });
  };
  EXPECT_EQ(fails_like("SOUND.NOTE", CommandArguments("c4 e4 <g4 [a4 b4]>", 1)),
            Errors{"SOUND.NOTE: out of memory"});
  EXPECT_EQ(
      fails_like("SCREEN", CommandArguments(8, 4, "a title that takes a block of its own", 1)),
      Errors{"SCREEN: out of memory"});
}

// The text of an error takes memory, too, until it is remembered.
TEST(OutOfMemory, LeavesAnErrorInPlaceOfAnother) {
  Bridge bridge;
  EXPECT_EQ(errors_when_memory_is_scarce([&] {
              qorrt_call_typed_f64(bridge.handle(), "NOTHING OF THIS NAME", nullptr, nullptr, 0);
            }),
            Errors{"out of memory"});
  EXPECT_EQ(errors_when_memory_is_scarce(
                [&] { qorrt_call_typed_f64(bridge.handle(), "RECT", nullptr, nullptr, 0); }),
            Errors{"RECT: out of memory"});
}

TEST(OutOfMemory, KeepsAHostFromStarting) {
  int64_t handle = 0;
  EXPECT_EQ(errors_when_memory_is_scarce([&] {
              qorrt_shutdown(handle);
              handle = qorrt_init(0, nullptr);
            }),
            Errors{"the host: out of memory"});
  EXPECT_NE(handle, 0);
  qorrt_shutdown(handle);
}

TEST(OutOfMemory, LeavesAByteStringWithoutItsLength) {
  const char bytes[] = "a\0b";
  EXPECT_EQ(errors_when_memory_is_scarce([&] { qorrt_register_binary(bytes, 3); }),
            Errors{"a byte string: out of memory"});
  EXPECT_EQ(qorrt_strlen(bytes), 3);
  qorrt_register_binary(bytes, -1);
}

TEST(LastError, IsCutWhereItsMemoryEnds) {
  Bridge bridge;
  std::string path(8000, 'x');
  const std::string error = bridge.error_of("BINWRITER", path, "y");
  EXPECT_TRUE(error.starts_with("BINWRITER: cannot write")) << error;
  EXPECT_LT(error.size(), 4096U);
}

} // namespace
} // namespace kavo::test
