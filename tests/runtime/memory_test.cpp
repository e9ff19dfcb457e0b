// More memory than there is: the program is ended with a message, whoever asked for it.
#include <gtest/gtest.h>

#include <cstdlib>

#include "runtime/qor.h"

namespace {

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
