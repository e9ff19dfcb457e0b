// The thirteen operations themselves: handles, errors, strings, frames.
#include <gtest/gtest.h>

#include <climits>
#include <memory>

#include "runtime/text.h"
#include "tests/host/bridge.h"

namespace {

using kavo::test::Bridge;
using kavo::test::InvisibleBridge;

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
  InvisibleBridge host;
  const int64_t wrong = host.bridge.handle() + 1;
  EXPECT_EQ(qorrt_call_typed_f64(wrong, "CLS", nullptr, nullptr, 0), 0.0);
  EXPECT_EQ(host.bridge.take_error(),
            "CLS: no host runs under the handle " + std::to_string(wrong));
  EXPECT_EQ(qorrt_call_typed_arr(0, "CLS", nullptr, nullptr, 0), nullptr);
  EXPECT_EQ(host.bridge.take_error(), "CLS: no host runs under the handle 0");
}

TEST(Handle, OtherOperationsIgnoreAWrongOne) {
  InvisibleBridge host;
  qorrt_shutdown(0);
  qorrt_shutdown(INT64_MIN);
  qorrt_set_event_dispatcher(0, nullptr);
  EXPECT_EQ(qorrt_frame_begin(INT64_MAX), 0);
  qorrt_frame_end(INT64_MAX, 1);
  EXPECT_EQ(host.bridge.error_of("RND", 1), "");
}

TEST(LastError, IsNullWhileNothingHasFailed) {
  InvisibleBridge host;
  EXPECT_EQ(qorrt_last_error(host.bridge.handle()), nullptr);
  host.bridge.send("RND", 1);
  EXPECT_EQ(qorrt_last_error(host.bridge.handle()), nullptr);
}

TEST(LastError, StaysUntilItIsCleared) {
  InvisibleBridge host;
  host.bridge.send("FOO");
  host.bridge.send("RND", 1);
  EXPECT_STREQ(qorrt_last_error(host.bridge.handle()), "unknown command \"FOO\"");
  qorrt_clear_last_error(host.bridge.handle());
  EXPECT_EQ(qorrt_last_error(host.bridge.handle()), nullptr);
}

TEST(LastError, IsTheLatest) {
  InvisibleBridge host;
  host.bridge.send("FOO");
  host.bridge.send("BAR");
  EXPECT_EQ(host.bridge.take_error(), "unknown command \"BAR\"");
}

TEST(LastError, DoesNotSurviveTheHost) {
  const int64_t handle = qorrt_init(0, nullptr);
  qorrt_call_typed_f64(handle, "FOO", nullptr, nullptr, 0);
  qorrt_shutdown(handle);
  EXPECT_EQ(qorrt_last_error(handle), nullptr);
}

TEST(LastError, ShowsForeignBytesLegibly) {
  InvisibleBridge host;
  EXPECT_EQ(host.bridge.error_of("A\n\x7F"), "unknown command \"A\\x0A\\x7F\"");
  EXPECT_EQ(host.bridge.error_of(std::string(1000, 'X').c_str()),
            "unknown command \"" + std::string(80, 'X') + "…\"");
}

TEST(FailedCommands, GiveZeroOrNull) {
  InvisibleBridge host;
  EXPECT_EQ(host.bridge.send("FOO"), 0.0);
  EXPECT_EQ(host.bridge.fetch("FOO"), nullptr);
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
    InvisibleBridge host;
    qorrt_register_binary(bytes, 3);
  }
  EXPECT_EQ(qorrt_strlen(bytes), 3);
  qorrt_register_binary(bytes, -1);
}

TEST(HostValues, AreAllUnknown) {
  InvisibleBridge host;
  for (const int64_t value : {INT64_MIN, int64_t{-1}, int64_t{0}, int64_t{1}, INT64_MAX}) {
    EXPECT_EQ(qorrt_val_to_f64(host.bridge.handle(), value), 0.0);
    const std::unique_ptr<char, void (*)(char*)> text(qorrt_val_to_str(host.bridge.handle(), value),
                                                      qor_str_free);
    EXPECT_STREQ(text.get(), "");
  }
}

TEST(Frames, Nest) {
  InvisibleBridge host;
  const int64_t outer = qorrt_frame_begin(host.bridge.handle());
  const int64_t inner = qorrt_frame_begin(host.bridge.handle());
  EXPECT_NE(outer, inner);
  qorrt_frame_end(host.bridge.handle(), inner);
  qorrt_frame_end(host.bridge.handle(), outer);
  EXPECT_EQ(qorrt_frame_begin(host.bridge.handle()), outer);
}

TEST(Frames, AWrongTokenIsHarmless) {
  InvisibleBridge host;
  const int64_t token = qorrt_frame_begin(host.bridge.handle());
  for (const int64_t wrong : {int64_t{0}, int64_t{-1}, INT64_MIN, INT64_MAX, token + 1})
    qorrt_frame_end(host.bridge.handle(), wrong);
  EXPECT_EQ(qorrt_frame_begin(host.bridge.handle()), token + 1);
}

} // namespace
