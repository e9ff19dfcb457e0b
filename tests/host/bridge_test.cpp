// The thirteen operations themselves: handles, errors, strings, frames.
#include <gtest/gtest.h>

#include <climits>
#include <memory>

#include "runtime/text.h"
#include "tests/host/bridge.h"

namespace {

using kavo::test::Bridge;

TEST(Handle, IsNeverZeroAndNewForEachHost) {
  const int64_t first = qorrt_init(0, nullptr);
  EXPECT_NE(first, 0);
  qorrt_shutdown(first);
  const int64_t second = qorrt_init(0, nullptr);
  EXPECT_NE(second, first);
  qorrt_shutdown(second);
}

TEST(Handle, ShuttingDownTwiceIsHarmless) {
  const int64_t handle = qorrt_init(0, nullptr);
  qorrt_shutdown(handle);
  qorrt_shutdown(handle);
  EXPECT_EQ(qorrt_last_error(handle), nullptr);
}

TEST(Handle, AWrongOneReachesNoHostAndIsAnError) {
  Bridge bridge;
  const int64_t wrong = bridge.handle() + 1;
  EXPECT_EQ(qorrt_call_typed_f64(wrong, "CLS", nullptr, nullptr, 0), 0.0);
  EXPECT_EQ(bridge.take_error(), "CLS: no host runs under the handle " + std::to_string(wrong));
  EXPECT_EQ(qorrt_call_typed_arr(0, "CLS", nullptr, nullptr, 0), nullptr);
  EXPECT_EQ(bridge.take_error(), "CLS: no host runs under the handle 0");
}

TEST(Handle, OtherOperationsIgnoreAWrongOne) {
  Bridge bridge;
  qorrt_shutdown(0);
  qorrt_shutdown(INT64_MIN);
  qorrt_set_event_dispatcher(0, nullptr);
  EXPECT_EQ(qorrt_frame_begin(INT64_MAX), 0);
  qorrt_frame_end(INT64_MAX, 1);
  EXPECT_EQ(bridge.error_of("RND", 1), "");
}

TEST(LastError, IsNullWhileNothingHasFailed) {
  Bridge bridge;
  EXPECT_EQ(qorrt_last_error(bridge.handle()), nullptr);
  bridge.send("RND", 1);
  EXPECT_EQ(qorrt_last_error(bridge.handle()), nullptr);
}

TEST(LastError, StaysUntilItIsCleared) {
  Bridge bridge;
  bridge.send("FOO");
  bridge.send("RND", 1);
  EXPECT_STREQ(qorrt_last_error(bridge.handle()), "unknown command \"FOO\"");
  qorrt_clear_last_error(bridge.handle());
  EXPECT_EQ(qorrt_last_error(bridge.handle()), nullptr);
}

TEST(LastError, IsTheLatest) {
  Bridge bridge;
  bridge.send("FOO");
  bridge.send("BAR");
  EXPECT_EQ(bridge.take_error(), "unknown command \"BAR\"");
}

TEST(LastError, DoesNotSurviveTheHost) {
  const int64_t handle = qorrt_init(0, nullptr);
  qorrt_call_typed_f64(handle, "FOO", nullptr, nullptr, 0);
  qorrt_shutdown(handle);
  EXPECT_EQ(qorrt_last_error(handle), nullptr);
}

TEST(LastError, ShowsForeignBytesLegibly) {
  Bridge bridge;
  EXPECT_EQ(bridge.error_of("A\n\x7F"), "unknown command \"A\\x0A\\x7F\"");
  EXPECT_EQ(bridge.error_of(std::string(1000, 'X').c_str()),
            "unknown command \"" + std::string(80, 'X') + "…\"");
}

TEST(FailedCommands, GiveZeroOrNull) {
  Bridge bridge;
  EXPECT_EQ(bridge.send("FOO"), 0.0);
  EXPECT_EQ(bridge.fetch("FOO"), nullptr);
}

TEST(BinaryStrings, HaveTheLengthThatWasRegistered) {
  const char bytes[] = "a\0b";
  EXPECT_LT(qorrt_strlen(bytes), 0);
  qorrt_register_binary(bytes, 3);
  EXPECT_EQ(qorrt_strlen(bytes), 3);
  qorrt_register_binary(bytes, 2);
  EXPECT_EQ(qorrt_strlen(bytes), 2);
  qorrt_register_binary(bytes, -1);
  EXPECT_LT(qorrt_strlen(bytes), 0);
}

TEST(BinaryStrings, MayBeEmpty) {
  const char* bytes = "";
  qorrt_register_binary(bytes, 0);
  EXPECT_EQ(qorrt_strlen(bytes), 0);
  qorrt_register_binary(bytes, -1);
}

TEST(BinaryStrings, ForgettingAnUnknownOneIsHarmless) {
  const char* bytes = "x";
  qorrt_register_binary(bytes, INT64_MIN);
  EXPECT_LT(qorrt_strlen(bytes), 0);
}

TEST(BinaryStrings, NullIsNotRegistered) {
  qorrt_register_binary(nullptr, 5);
  EXPECT_LT(qorrt_strlen(nullptr), 0);
}

TEST(BinaryStrings, OutliveAHost) {
  const char bytes[] = "abc";
  {
    Bridge bridge;
    qorrt_register_binary(bytes, 3);
  }
  EXPECT_EQ(qorrt_strlen(bytes), 3);
  qorrt_register_binary(bytes, -1);
}

TEST(HostValues, AreAllUnknown) {
  Bridge bridge;
  for (const int64_t value : {INT64_MIN, int64_t{-1}, int64_t{0}, int64_t{1}, INT64_MAX}) {
    EXPECT_EQ(qorrt_val_to_f64(bridge.handle(), value), 0.0);
    const std::unique_ptr<char, void (*)(char*)> text(qorrt_val_to_str(bridge.handle(), value),
                                                      qor_str_free);
    EXPECT_STREQ(text.get(), "");
  }
}

TEST(Frames, Nest) {
  Bridge bridge;
  const int64_t outer = qorrt_frame_begin(bridge.handle());
  const int64_t inner = qorrt_frame_begin(bridge.handle());
  EXPECT_NE(outer, inner);
  qorrt_frame_end(bridge.handle(), inner);
  qorrt_frame_end(bridge.handle(), outer);
  EXPECT_EQ(qorrt_frame_begin(bridge.handle()), outer);
}

TEST(Frames, AWrongTokenIsHarmless) {
  Bridge bridge;
  const int64_t token = qorrt_frame_begin(bridge.handle());
  for (const int64_t wrong : {int64_t{0}, int64_t{-1}, INT64_MIN, INT64_MAX, token + 1})
    qorrt_frame_end(bridge.handle(), wrong);
  EXPECT_EQ(qorrt_frame_begin(bridge.handle()), token + 1);
}

} // namespace
