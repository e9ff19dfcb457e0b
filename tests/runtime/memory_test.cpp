// Memory that was used before, and more memory than there is: then the program is ended with a
// message, whoever asked for it.
#include <gtest/gtest.h>

#include <cstdlib>

#include "runtime/qor.h"
#include "tests/fakes/binary_strings.h"
#include "tests/runtime/values.h"

namespace {

using kavo::test::take;

class MemoryDeathTest : public testing::Test {
protected:
  // The process that is to die starts anew: the address sanitizer then reads what it is told, to
  // refuse memory as malloc does and not in a way of its own.
  void SetUp() override {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    setenv("ASAN_OPTIONS", "allocator_may_return_null=1", 1);
    setenv("TSAN_OPTIONS", "allocator_may_return_null=1", 1);
  }
};

TEST(StringMemory, AStringHasNotTheLengthOfOneThatStoodAtItsAddress) {
  const kavo::fakes::StaleLengths stale;
  auto* text = qor_str_repeat("abcd", 2);
  EXPECT_EQ(qor_len_str(text), 8);
  EXPECT_EQ(take(qor_str_str(text)), "abcdabcd");
  EXPECT_EQ(take(qor_str_concat(text, text)), "abcdabcdabcdabcd");
  EXPECT_EQ(take(qor_left(text, 3)), "abc");
  EXPECT_EQ(take(qor_replace(text, "b", "-")), "a-cda-cd");
  EXPECT_EQ(take(qor_replace(text, "b", "")), "acdacd");
  EXPECT_EQ(take(qor_upper(text)), "ABCDABCD");
  EXPECT_EQ(take(qor_int_to_str(-12345678)), "-12345678");
  EXPECT_EQ(take(qor_double_to_str(0.5)), "0.5");
  auto* six = qor_str_repeat("foobar", 1);
  EXPECT_EQ(take(qor_base64_encode(six)), "Zm9vYmFy");
  qor_str_free(six);
  EXPECT_EQ(take(qor_sha256("")).size(), 64U);
  const auto pieces = kavo::test::own_deep(qor_split("ab,cdefghij", ","));
  EXPECT_EQ(kavo::test::to_strings(pieces.get()), (kavo::test::Strings{"ab", "cdefghij"}));
  EXPECT_EQ(take(qor_join_arr(pieces.get(), "-")), "ab-cdefghij");
  qor_str_free(text);
}

TEST_F(MemoryDeathTest, EndsTheProgramForAnArray) {
  EXPECT_DEATH(qor_array_new(INT64_MAX), "Out of memory");
  EXPECT_DEATH(qor_array_new(INT64_MAX / 8), "Out of memory");
  EXPECT_DEATH(qor_ones(INT64_MAX), "Out of memory");
  EXPECT_DEATH(qor_iota(INT64_MAX), "Out of memory");
  EXPECT_DEATH(qor_iota3(INT64_MAX, 0, 1), "Out of memory");
  EXPECT_DEATH(qor_linspace(0, 1, INT64_MAX), "Out of memory");
  EXPECT_DEATH(qor_range(0, 1e300, 1), "Out of memory");
}

TEST_F(MemoryDeathTest, EndsTheProgramForAString) {
  EXPECT_DEATH(qor_space(INT64_MAX), "Out of memory");
  EXPECT_DEATH(qor_str_repeat("ab", INT64_MAX), "Out of memory") << "the product overflows";
  EXPECT_DEATH(qor_lpad("a", INT64_MAX, "b"), "Out of memory");
  EXPECT_DEATH(qor_rpad2("a", INT64_MAX), "Out of memory");
}

} // namespace
