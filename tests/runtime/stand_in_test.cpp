// The host of programs that bring none.
#include <gtest/gtest.h>

#include <string>

#include "runtime/error.h"
#include "runtime/format.h"
#include "runtime/qorrt.h"
#include "runtime/text.h"
#include "tests/runtime/values.h"

namespace {

using kavo::test::take;

TEST(StandIn, KeepsTheLengthOfAByteStringUntilItIsFreed) {
  char* const zero = qor_chr(0);
  char* const text = qor_str_concat("a", zero);
  EXPECT_EQ(qor_len_str(zero), 1);
  EXPECT_EQ(qor_len_str(text), 2);
  EXPECT_EQ(qorrt_strlen(text), 2);
  qor_str_free(text);
  EXPECT_EQ(qorrt_strlen(text),
            -1); // NOLINT(clang-analyzer-unix.Malloc): the address alone is read
  qor_str_free(zero);
}

TEST(StandIn, TakesTheLastLengthAndNoNullString) {
  const char* const text = "abc";
  qorrt_register_binary(text, 3);
  qorrt_register_binary(text, 2);
  EXPECT_EQ(qorrt_strlen(text), 2);
  qorrt_register_binary(text, -1);
  qorrt_register_binary(nullptr, 3);
  EXPECT_EQ(qorrt_strlen(text), -1);
  EXPECT_EQ(qorrt_strlen(nullptr), -1);
}

TEST(StandIn, RefusesEveryCommandAndSaysWhy) {
  const int64_t handle = qorrt_init(0, nullptr);
  ASSERT_NE(handle, 0);
  EXPECT_EQ(qorrt_last_error(handle), nullptr);
  EXPECT_EQ(qorrt_call_typed_f64(handle, "SCREEN", nullptr, nullptr, 0), 0.0);
  EXPECT_EQ(std::string(qorrt_last_error(handle)).rfind("there is no host", 0), 0U);
  qorrt_clear_last_error(handle);
  EXPECT_EQ(qorrt_last_error(handle), nullptr);
  EXPECT_EQ(qorrt_call_typed_arr(handle, "SCREEN", nullptr, nullptr, 0), nullptr);
  EXPECT_NE(qorrt_last_error(handle), nullptr);
  qorrt_shutdown(handle);
}

TEST(StandIn, OwnsNoValues) {
  qor_slot value;
  value.i64 = 1;
  EXPECT_EQ(take(qor_format1_t("<{}>", "h", value)), "<>");
  EXPECT_EQ(take(qor_format1_t("<{:.1f}>", "h", value)), "<0.0>");
}

} // namespace
