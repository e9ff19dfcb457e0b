// Null in the place of every string, array, map, record and function: what a function gives then,
// and that no error is left. Where null is more than a missing value the area's own tests say so.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "runtime/qor.h"
#include "tests/runtime/values.h"

namespace {

using kavo::test::Strings;
using kavo::test::take;
using kavo::test::take_numbers;
using kavo::test::take_strings;

class Null : public testing::Test {
protected:
  void SetUp() override { qor_err_clear(); }
  void TearDown() override { EXPECT_EQ(qor_err_code(), 0) << "null is no error"; }
};

// An array that was made, and is empty.
testing::AssertionResult is_empty(QorArray* taken) {
  const auto array = kavo::test::own_deep(taken);
  if (array == nullptr)
    return testing::AssertionFailure() << "is null";
  if (array->length != 0)
    return testing::AssertionFailure() << "has " << array->length << " elements";
  return testing::AssertionSuccess();
}

using NullArray = Null;

TEST_F(NullArray, IsReadAsEmpty) {
  uint32_t tag = 99;
  EXPECT_EQ(qor_array_len(nullptr), 0);
  EXPECT_EQ(qor_array_get(nullptr, 0), 0.0);
  EXPECT_EQ(qor_array_get_ptr(nullptr, 0), nullptr);
  EXPECT_STREQ(qor_array_get_str(nullptr, 0), "");
  EXPECT_EQ(qor_array_get_tagged(nullptr, 0, &tag), 0.0);
  EXPECT_EQ(tag, static_cast<uint32_t>(QOR_TAG_FLOAT64));
  EXPECT_EQ(qor_array_get_tagged(nullptr, 0, nullptr), 0.0);
  EXPECT_EQ(qor_array_classify_elem(nullptr, 1.0), static_cast<uint32_t>(QOR_TAG_FLOAT64));
  EXPECT_EQ(qor_array_is_nested(nullptr), 0);
  EXPECT_EQ(qor_array_min(nullptr), 0.0);
  EXPECT_EQ(qor_array_max(nullptr), 0.0);
}

TEST_F(NullArray, IsLeftAloneByWhatWorksInPlace) {
  qor_array_set(nullptr, 0, 1.0);
  qor_array_set_nested(nullptr);
  qor_array_set_string_elems(nullptr);
  qor_array_set_bool_elems(nullptr);
  qor_array_free(nullptr);
  qor_array_free_deep(nullptr);
  EXPECT_EQ(qor_array_pop(nullptr), 0.0);
  EXPECT_EQ(take(qor_array_pop_str(nullptr)), "");
  EXPECT_EQ(qor_array_copy_deep(nullptr), nullptr);
}

TEST_F(NullArray, GrowsByWhatIsAppended) {
  EXPECT_EQ(take_numbers(qor_array_append(nullptr, 2.5)), kavo::test::Numbers{2.5});
  EXPECT_EQ(take_numbers(qor_array_append_tagged(nullptr, QOR_TAG_FLOAT64, 2.5)),
            kavo::test::Numbers{2.5});
  EXPECT_EQ(take_numbers(qor_array_append_arr(nullptr, kavo::test::numbers({1, 2}).get())),
            (kavo::test::Numbers{1, 2}));
  EXPECT_EQ(take_numbers(qor_array_append_arr(kavo::test::numbers({1, 2}).get(), nullptr)),
            (kavo::test::Numbers{1, 2}));
  EXPECT_TRUE(is_empty(qor_array_append_arr(nullptr, nullptr)));
}

TEST_F(NullArray, GivesAnEmptyOneInEveryOrder) {
  EXPECT_TRUE(is_empty(qor_array_reverse(nullptr)));
  EXPECT_TRUE(is_empty(qor_array_sort(nullptr)));
  EXPECT_TRUE(is_empty(qor_grade(nullptr)));
  EXPECT_TRUE(is_empty(qor_array_shuffle(nullptr)));
  EXPECT_EQ(take_numbers(qor_array_len_shape(nullptr)), kavo::test::Numbers{0});
}

TEST_F(NullArray, HasNothingToSelect) {
  EXPECT_TRUE(is_empty(qor_array_gather(kavo::test::numbers({1}).get(), nullptr)));
  EXPECT_EQ(take_numbers(qor_array_gather(nullptr, kavo::test::numbers({0, 1}).get())),
            (kavo::test::Numbers{0, 0}));
  for (const auto select : {qor_array_take, qor_array_drop, qor_take_n, qor_drop_n})
    for (const int64_t n : {INT64_MIN, int64_t{-1}, int64_t{0}, int64_t{1}, INT64_MAX})
      EXPECT_TRUE(is_empty(select(nullptr, n))) << n;
  EXPECT_TRUE(is_empty(qor_array_diff(nullptr, kavo::test::numbers({1}).get())));
  EXPECT_EQ(take_numbers(qor_array_diff(kavo::test::numbers({1}).get(), nullptr)),
            kavo::test::Numbers{1});
  EXPECT_TRUE(is_empty(qor_array_unique(nullptr)));
  EXPECT_TRUE(is_empty(qor_array_unique_str(nullptr)));
  EXPECT_TRUE(is_empty(qor_array_flatten(nullptr)));
  EXPECT_EQ(qor_array_indexof(nullptr, 0.0), -1);
  EXPECT_EQ(qor_array_has_num(nullptr, 0.0), 0);
  EXPECT_EQ(qor_array_has_str(nullptr, ""), 0);
  EXPECT_EQ(qor_array_has_str(kavo::test::strings({"a", ""}).get(), nullptr), 1);
}

TEST_F(NullArray, GivesAnEmptyOneOfEveryOperation) {
  const auto one = kavo::test::numbers({1});
  for (int64_t code = -1; code <= 11; ++code) {
    EXPECT_TRUE(is_empty(qor_array_binop(nullptr, one.get(), code))) << code;
    EXPECT_TRUE(is_empty(qor_array_binop(one.get(), nullptr, code))) << code;
    EXPECT_TRUE(is_empty(qor_array_scalar_op(nullptr, 1, code, 0))) << code;
    EXPECT_TRUE(is_empty(qor_array_scalar_op(nullptr, 1, code, 1))) << code;
    EXPECT_TRUE(is_empty(qor_array_cmp_scalar(nullptr, 1, code))) << code;
    EXPECT_TRUE(is_empty(qor_array_cmp_arr(nullptr, one.get(), code))) << code;
    EXPECT_TRUE(is_empty(qor_array_cmp_arr(one.get(), nullptr, code))) << code;
    EXPECT_TRUE(is_empty(qor_array_cmp_scalar_str(nullptr, "a", code))) << code;
  }
  EXPECT_EQ(
      take_numbers(qor_array_cmp_scalar_str(kavo::test::strings({"", "a"}).get(), nullptr, 0)),
      (kavo::test::Numbers{1, 0}));
}

TEST_F(NullArray, GivesAnEmptyOneOfEveryMathematicalFunction) {
  for (const auto function :
       {qor_array_sin,  qor_array_cos,   qor_array_tan,   qor_array_asin,   qor_array_acos,
        qor_array_atan, qor_array_sinh,  qor_array_cosh,  qor_array_tanh,   qor_array_exp,
        qor_array_log,  qor_array_log10, qor_array_sqr,   qor_array_abs,    qor_array_floor,
        qor_array_ceil, qor_array_round, qor_array_trunc, qor_array_cumsum, qor_array_cumprod})
    EXPECT_TRUE(is_empty(function(nullptr)));
}

TEST_F(NullArray, HasTheStatisticsOfNothing) {
  EXPECT_EQ(qor_array_sum(nullptr), 0.0);
  EXPECT_EQ(qor_array_product(nullptr), 1.0);
  EXPECT_EQ(qor_array_dot(nullptr, kavo::test::numbers({1}).get()), 0.0);
  EXPECT_EQ(qor_array_dot(kavo::test::numbers({1}).get(), nullptr), 0.0);
  EXPECT_EQ(qor_array_any(nullptr), 0);
  EXPECT_EQ(qor_array_all(nullptr), 1);
  EXPECT_EQ(qor_array_count(nullptr), 0);
  for (const auto statistic : {qor_mean, qor_array_variance, qor_stdev, qor_array_median})
    EXPECT_EQ(statistic(nullptr), 0.0);
}

double first_of(double a, double /*b*/) {
  return a;
}

TEST_F(NullArray, CallsNoFunction) {
  const auto fail_ff = [](double) -> double {
    ADD_FAILURE() << "called";
    return 0;
  };
  EXPECT_TRUE(is_empty(qor_filter_fn(fail_ff, nullptr)));
  EXPECT_TRUE(is_empty(qor_array_apply_ff(fail_ff, nullptr)));
  EXPECT_TRUE(is_empty(qor_select_fn(fail_ff, nullptr)));
  EXPECT_TRUE(is_empty(qor_take_while_fn(fail_ff, nullptr)));
  EXPECT_TRUE(is_empty(qor_drop_while_fn(fail_ff, nullptr)));
  EXPECT_TRUE(is_empty(qor_array_apply_ss(qor_upper, nullptr)));
  EXPECT_TRUE(
      is_empty(qor_array_apply_ifs([](double, const char*) { return int64_t{1}; }, nullptr, "a")));
  EXPECT_TRUE(
      is_empty(qor_array_apply_sfi([](double, int64_t) { return qor_space(1); }, nullptr, 1)));
  EXPECT_TRUE(is_empty(
      qor_array_apply_sfii([](double, int64_t, int64_t) { return qor_space(1); }, nullptr, 1, 2)));
  EXPECT_TRUE(is_empty(qor_array_apply_ffi(qor_round_p, nullptr, 1)));
  EXPECT_EQ(qor_agg_fn(first_of, nullptr, 7), 7.0);
  EXPECT_EQ(qor_reduce_fn(first_of, nullptr), 0.0);
  EXPECT_TRUE(is_empty(qor_outer_fn(first_of, nullptr, kavo::test::numbers({1}).get())));
}

using NullString = Null;

TEST_F(NullString, IsCutAsTheEmptyOne) {
  EXPECT_EQ(qor_len_str(nullptr), 0);
  EXPECT_EQ(take(qor_mid(nullptr, 0, 1)), "");
  EXPECT_EQ(take(qor_mid_lax(nullptr, 5, 1)), "");
  EXPECT_EQ(take(qor_left(nullptr, 1)), "");
  EXPECT_EQ(take(qor_right(nullptr, 1)), "");
  EXPECT_EQ(take(qor_str_slice(nullptr, 1, 1)), "");
  EXPECT_EQ(take(qor_str_slice(nullptr, 1, 0)), "");
  EXPECT_EQ(qor_asc(nullptr), 0);
  qor_str_free(nullptr);
}

TEST_F(NullString, IsChangedAsTheEmptyOne) {
  for (const auto change : {qor_str_str, qor_upper, qor_lower, qor_trim, qor_ltrim, qor_rtrim})
    EXPECT_EQ(take(change(nullptr)), "");
  EXPECT_EQ(take(qor_str_concat(nullptr, nullptr)), "");
  EXPECT_EQ(take(qor_str_repeat(nullptr, 3)), "");
  EXPECT_EQ(take(qor_lpad(nullptr, 2, nullptr)), "  ");
  EXPECT_EQ(take(qor_rpad(nullptr, 2, nullptr)), "  ");
  EXPECT_EQ(take(qor_lpad2(nullptr, 2)), "  ");
  EXPECT_EQ(take(qor_rpad2(nullptr, 2)), "  ");
  EXPECT_EQ(take(qor_insert_str(nullptr, "a", 9)), "a");
  EXPECT_EQ(take(qor_insert_str("a", nullptr, 9)), "a");
  EXPECT_EQ(take(qor_replace(nullptr, nullptr, nullptr)), "");
}

TEST_F(NullString, ComparesAsItsCommentsSay) {
  EXPECT_EQ(qor_instr(nullptr, "a"), -1);
  EXPECT_EQ(qor_instr("a", nullptr), -1);
  EXPECT_EQ(qor_str_eq(nullptr, nullptr), 1);
  EXPECT_EQ(qor_str_eq(nullptr, ""), 0);
  EXPECT_EQ(qor_str_ne("", nullptr), 1);
  EXPECT_EQ(qor_str_cmp(nullptr, nullptr), 0);
  EXPECT_EQ(qor_str_cmp(nullptr, ""), -1);
  EXPECT_EQ(qor_str_cmp("", nullptr), 1);
  EXPECT_EQ(qor_startswith(nullptr, ""), 1);
  EXPECT_EQ(qor_endswith("", nullptr), 1);
}

TEST_F(NullString, IsTakenApartAsTheEmptyOne) {
  EXPECT_EQ(take_strings(qor_split(nullptr, nullptr)), Strings{""});
  EXPECT_TRUE(is_empty(qor_str_to_chars(nullptr)));
  EXPECT_EQ(take(qor_join_arr(nullptr, nullptr)), "");
  EXPECT_EQ(qor_val(nullptr), 0.0);
}

TEST_F(NullString, IsAnEmptyFormatText) {
  const qor_slot slot{.i64 = 1};
  EXPECT_EQ(take(qor_format(nullptr, nullptr)), "");
  EXPECT_EQ(take(qor_format("{d}", nullptr)), "0");
  EXPECT_EQ(take(qor_format1(nullptr, 1)), "");
  EXPECT_EQ(take(qor_format2(nullptr, 1, 2)), "");
  EXPECT_EQ(take(qor_format3(nullptr, 1, 2, 3)), "");
  EXPECT_EQ(take(qor_format4(nullptr, 1, 2, 3, 4)), "");
  EXPECT_EQ(take(qor_format1_t(nullptr, "i", slot)), "");
  EXPECT_EQ(take(qor_format2_t(nullptr, "ii", slot, slot)), "");
  EXPECT_EQ(take(qor_format3_t(nullptr, "iii", slot, slot, slot)), "");
  EXPECT_EQ(take(qor_format4_t(nullptr, "iiii", slot, slot, slot, slot)), "");
}

TEST_F(NullString, AsTypesMeansNumbers) {
  const qor_slot half{.f64 = 0.5};
  EXPECT_EQ(take(qor_format1_t("{}", nullptr, half)), "0.5");
  EXPECT_EQ(take(qor_format2_t("{} {}", nullptr, half, half)), "0.5 0.5");
  EXPECT_EQ(take(qor_format3_t("{} {} {}", nullptr, half, half, half)), "0.5 0.5 0.5");
  EXPECT_EQ(take(qor_format4_t("{}{}{}{}", nullptr, half, half, half, half)), "0.50.50.50.5");
  EXPECT_EQ(take(qor_format1_t("<{s}>", "s", {.str = nullptr})), "<>");
}

TEST_F(NullString, IsNoPath) {
  EXPECT_EQ(take(qor_txtreader(nullptr)), "");
  EXPECT_EQ(take(qor_txtreader_enc(nullptr, nullptr)), "");
  qor_txtwriter(nullptr, "text");
  qor_txtwriter_append(nullptr, "text");
  qor_txtwriter3(nullptr, "text", 1);
  qor_txtwriter_enc(nullptr, "text", 0, nullptr);
  EXPECT_EQ(qor_mkdir_native(nullptr), -1);
  qor_rmdir(nullptr);
  EXPECT_EQ(qor_file_exists(nullptr), 0);
  EXPECT_EQ(qor_file_isdir(nullptr), 0);
  EXPECT_EQ(qor_file_size(nullptr), -1);
  EXPECT_EQ(take(qor_cd(nullptr)), take(qor_pwd()));
  EXPECT_EQ(take(qor_path_dirname(nullptr)), ".");
  EXPECT_EQ(take(qor_path_normalize(nullptr)), ".");
}

TEST_F(NullString, IsNoVariable) {
  EXPECT_EQ(take(qor_getenv(nullptr)), "");
  qor_setenv(nullptr, "x");
  qor_setenv(nullptr, nullptr);
}

TEST_F(NullString, IsNoDate) {
  for (const auto field :
       {qor_year_str, qor_month_str, qor_day_str, qor_hour_str, qor_minute_str, qor_second_str})
    EXPECT_EQ(field(nullptr), 0);
  EXPECT_EQ(take(qor_cvdate(nullptr)), "");
  EXPECT_TRUE(is_empty(qor_cvdate_arr(nullptr)));
  EXPECT_EQ(take(qor_format_date(nullptr, nullptr, NAN)), "");
  EXPECT_EQ(take(qor_format_date("2024-3-5", nullptr, NAN)), "2024-03-05 00:00:00");
  EXPECT_EQ(take(qor_dateadd("D", nullptr, 1)), "");
  EXPECT_EQ(take(qor_dateadd(nullptr, "2024-3-5", 1)), "2024-03-05 00:00:00");
  EXPECT_EQ(qor_datediff("D", nullptr, "2024-3-5"), 0.0);
  EXPECT_EQ(qor_datediff("D", "2024-3-5", nullptr), 0.0);
  EXPECT_EQ(qor_datediff(nullptr, "2024-3-5", "2024-3-6"), 86400.0);
  EXPECT_TRUE(is_empty(qor_datediff_vec("D", nullptr, nullptr)));
}

TEST_F(NullString, IsAnEmptyPatternAndText) {
  EXPECT_EQ(qor_regex_match(nullptr, nullptr), 1);
  EXPECT_EQ(qor_regex_match("a", nullptr), 0);
  EXPECT_EQ(qor_regex_match(nullptr, "a"), 0);
  EXPECT_EQ(take(qor_regex_replace("a", nullptr, "b")), "");
  EXPECT_EQ(take(qor_regex_replace("a", "cat", nullptr)), "ct");
  EXPECT_TRUE(is_empty(qor_regex_findall("a", nullptr)));
}

TEST_F(NullString, HasTheDigestAndTheCodeOfNothing) {
  EXPECT_EQ(take(qor_sha256(nullptr)), take(qor_sha256("")));
  EXPECT_EQ(take(qor_base64_encode(nullptr)), "");
  EXPECT_EQ(take(qor_base64_decode(nullptr)), "");
}

TEST_F(NullString, NamesNothingOfTheSystem) {
  EXPECT_EQ(qor_os_feature(nullptr), 0);
  EXPECT_EQ(qor_isstr(nullptr), 1);
  qor_setlocale(nullptr);
  EXPECT_EQ(take(qor_int_to_str(1000)), "1000");
  qor_event_on(nullptr, nullptr);
  qor_event_raise_str(nullptr, nullptr);
  qorrt_register_event_handler(nullptr, nullptr);
  qorrt_dispatch_event(nullptr, nullptr, nullptr, 0);
}

using NullObject = Null;

TEST_F(NullObject, IsAMapWithoutEntries) {
  const auto* key = "x";
  qor_map_set_f64(nullptr, key, 1);
  qor_map_set_str(nullptr, key, "a");
  qor_map_set_tagged(nullptr, key, QOR_TAG_FLOAT64, {.f64 = 1});
  EXPECT_EQ(qor_map_get_f64(nullptr, key), 0.0);
  EXPECT_EQ(take(qor_map_get_str(nullptr, key)), "");
  EXPECT_EQ(qor_map_get_obj(nullptr, key), nullptr);
  qor_slot slot{.i64 = 7};
  EXPECT_EQ(qor_map_get_tagged(nullptr, key, &slot), 0U);
  EXPECT_EQ(slot.i64, 0);
  EXPECT_EQ(qor_map_has(nullptr, key), 0);
  EXPECT_EQ(take(qor_map_str(nullptr)), "{}");
  qor_map_free(nullptr);
}

TEST_F(NullObject, IsAKeyThatNoMapHas) {
  auto* map = qor_map_new();
  qor_map_set_f64(map, nullptr, 1);
  qor_map_set_str(map, nullptr, "a");
  qor_map_set_tagged(map, nullptr, QOR_TAG_FLOAT64, {.f64 = 1});
  EXPECT_EQ(map->count, 0);
  EXPECT_EQ(qor_map_get_f64(map, nullptr), 0.0);
  EXPECT_EQ(take(qor_map_get_str(map, nullptr)), "");
  EXPECT_EQ(qor_map_get_obj(map, nullptr), nullptr);
  EXPECT_EQ(qor_map_get_tagged(map, nullptr, nullptr), 0U);
  EXPECT_EQ(qor_map_has(map, nullptr), 0);
  qor_map_set_str(map, "x", nullptr);
  EXPECT_EQ(take(qor_map_str(map)), R"({"x": ""})");
  qor_map_free(map);
}

TEST_F(NullObject, IsARecordWithoutFields) {
  qor_udt_set_f64(nullptr, "x", 1);
  qor_udt_set_str(nullptr, "x", "a");
  EXPECT_EQ(qor_udt_get_f64(nullptr, "x"), 0.0);
  EXPECT_EQ(take(qor_udt_get_str(nullptr, "x")), "");
  qor_udt_free(nullptr);
  auto* record = qor_udt_new(nullptr);
  qor_udt_set_f64(record, nullptr, 1);
  qor_udt_set_str(record, nullptr, "a");
  EXPECT_EQ(qor_udt_get_f64(record, nullptr), 0.0);
  EXPECT_EQ(take(qor_udt_get_str(record, nullptr)), "");
  qor_udt_free(record);
}

using NullFunction = Null;

TEST_F(NullFunction, GivesAnEmptyArrayOrZero) {
  const auto one = kavo::test::numbers({1});
  const auto word = kavo::test::strings({"a"});
  EXPECT_TRUE(is_empty(qor_filter_fn(nullptr, one.get())));
  EXPECT_TRUE(is_empty(qor_array_apply_ff(nullptr, one.get())));
  EXPECT_TRUE(is_empty(qor_array_apply_ss(nullptr, word.get())));
  EXPECT_TRUE(is_empty(qor_array_apply_ifs(nullptr, one.get(), "a")));
  EXPECT_TRUE(is_empty(qor_array_apply_sfi(nullptr, one.get(), 1)));
  EXPECT_TRUE(is_empty(qor_array_apply_sfii(nullptr, one.get(), 1, 2)));
  EXPECT_TRUE(is_empty(qor_array_apply_ffi(nullptr, one.get(), 1)));
  EXPECT_TRUE(is_empty(qor_select_fn(nullptr, one.get())));
  EXPECT_TRUE(is_empty(qor_take_while_fn(nullptr, one.get())));
  EXPECT_TRUE(is_empty(qor_drop_while_fn(nullptr, one.get())));
  EXPECT_TRUE(is_empty(qor_outer_fn(nullptr, one.get(), one.get())));
  EXPECT_EQ(qor_agg_fn(nullptr, one.get(), 7), 0.0);
  EXPECT_EQ(qor_reduce_fn(nullptr, one.get()), 0.0);
}

} // namespace
