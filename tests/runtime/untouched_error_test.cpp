// What reports no error leaves the error state as it is, whatever it is given.
#include <gtest/gtest.h>

#include <cmath>

#include "runtime/qor.h"
#include "tests/runtime/values.h"

namespace {

using kavo::test::numbers;
using kavo::test::own_deep;
using kavo::test::strings;
using kavo::test::take;

// An error is pending before each test and is to be the same afterwards.
class UntouchedError : public testing::Test {
protected:
  void SetUp() override {
    qor_err_set("the first", 5);
    qor_err_code_clear();
    qor_err_set("pending", 7);
  }
  void TearDown() override {
    EXPECT_EQ(qor_err_code(), 7);
    EXPECT_EQ(qor_err_code_visible(), 7);
    EXPECT_EQ(take(qor_err_msg()), "pending");
    qor_err_clear();
    check_without_pending();
    EXPECT_EQ(qor_err_code_visible(), 0);
    EXPECT_EQ(take(qor_err_msg()), "");
    qor_err_clear();
  }

  // The same once more while no error is pending.
  virtual void check_without_pending() = 0;
};

class ArraysOfBadInput : public UntouchedError {
protected:
  void check_without_pending() override { check(); }

  static void check() {
    const auto empty = numbers({});
    const auto some = numbers({1, 2});
    const auto texts = strings({"a"});
    EXPECT_EQ(qor_array_min(empty.get()), 0.0);
    EXPECT_EQ(qor_array_max(empty.get()), 0.0);
    for (const int64_t index : {INT64_MIN, int64_t{-1}, int64_t{2}, INT64_MAX}) {
      EXPECT_EQ(qor_array_get(some.get(), index), 0.0);
      EXPECT_EQ(qor_array_get_ptr(some.get(), index), nullptr);
      EXPECT_STREQ(qor_array_get_str(texts.get(), index == 2 ? 1 : index), "");
      qor_array_set(some.get(), index, 9);
      own_deep(qor_array_gather(some.get(), numbers({static_cast<double>(index)}).get()));
    }
    EXPECT_EQ(qor_array_pop(empty.get()), 0.0);
    EXPECT_EQ(take(qor_array_pop_str(empty.get())), "");
    EXPECT_EQ(qor_array_median(empty.get()), 0.0);
    EXPECT_EQ(qor_mean(empty.get()), 0.0);
    for (const int64_t code : {-1, 3, 9, 99}) {
      own_deep(qor_array_binop(some.get(), numbers({0, NAN}).get(), code));
      own_deep(qor_array_binop(some.get(), texts.get(), code));
      own_deep(qor_array_scalar_op(some.get(), 0, code, 1));
      own_deep(qor_array_cmp_arr(texts.get(), some.get(), code));
    }
    own_deep(qor_array_new(-5));
    own_deep(qor_iota(-5));
    own_deep(qor_range(1, 2, 0));
  }
};

TEST_F(ArraysOfBadInput, LeaveIt) {
  check();
}

class DatesOfBadInput : public UntouchedError {
protected:
  void check_without_pending() override { check(); }

  static void check() {
    for (const char* date : {"", "no date", "2024", "2024-", "2024-13-45 99:99:99", "-1-1-1"}) {
      qor_year_str(date);
      qor_str_free(qor_dateadd("M", date, INFINITY));
      qor_str_free(qor_dateadd("?", date, NAN));
      qor_str_free(qor_format_date(date, "%Q", 1e300));
      qor_datediff("D", date, "2024-01-01");
      qor_datediff("", "2024-01-01", date);
    }
  }
};

TEST_F(DatesOfBadInput, LeaveIt) {
  check();
}

class PatternsOfBadInput : public UntouchedError {
protected:
  void check_without_pending() override { check(); }

  static void check() {
    for (const char* pattern :
         {"(", "[", "a{2,1}", "*", "\\", "(?<a)", "[z-a]", "a{99999999999}"}) {
      EXPECT_EQ(qor_regex_match(pattern, "a"), 0) << pattern;
      EXPECT_EQ(take(qor_regex_replace(pattern, "a", "b")), "a") << pattern;
      EXPECT_EQ(kavo::test::take_strings(qor_regex_findall(pattern, "a")), kavo::test::Strings{})
          << pattern;
    }
  }
};

TEST_F(PatternsOfBadInput, LeaveIt) {
  check();
}

} // namespace
