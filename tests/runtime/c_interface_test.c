/* The whole interface as a C program sees it: one call at least into each area. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "runtime/qor.h"

static int failures = 0;

static void check(int holds, const char* what) {
  if (!holds) {
    fprintf(stderr, "failed: %s\n", what);
    failures += 1;
  }
}

#define CHECK(condition) check((condition) ? 1 : 0, #condition)

/* Compares and frees a new string. */
static int is_text(char* s, const char* expected) {
  const int is_equal = strcmp(s, expected) == 0;
  if (!is_equal)
    fprintf(stderr, "\"%s\" is not \"%s\"\n", s, expected);
  qor_str_free(s);
  return is_equal;
}

static double doubled(double x) {
  return 2 * x;
}
static double is_large(double x) {
  return x > 2;
}
static double added(double a, double b) {
  return a + b;
}

static void check_errors(void) {
  qor_err_set("broken", 1);
  CHECK(qor_err_code() == 1);
  CHECK(is_text(qor_err_msg(), "broken"));
  qor_err_clear();
  CHECK(qor_recursion_enter() == 0);
  CHECK(qor_recursion_depth() == 1);
  qor_recursion_leave();
}

static void check_arrays(void) {
  QorArray* numbers = qor_iota(4);
  QorArray* large = qor_filter_fn(is_large, numbers);
  QorArray* twice = qor_array_apply_ff(doubled, numbers);
  QorArray* sum = qor_array_binop(numbers, twice, QOR_OP_ADD);
  QorArray* order = qor_grade(sum);
  CHECK(qor_array_len(large) == 2);
  CHECK(qor_array_get(twice, 3) == 8);
  CHECK(qor_array_sum(sum) == 30);
  CHECK(qor_array_get(order, 0) == 0);
  CHECK(qor_reduce_fn(added, numbers) == 10);
  CHECK(qor_array_indexof(numbers, 3) == 2);
  CHECK(qor_array_max(numbers) == 4);
  qor_array_free(numbers);
  qor_array_free(large);
  qor_array_free(twice);
  qor_array_free(sum);
  qor_array_free(order);
}

static void check_text(void) {
  QorArray* pieces = qor_split("a,b", ",");
  const qor_slot name = {.str = "Ada"};
  CHECK(is_text(qor_join_arr(pieces, "-"), "a-b"));
  CHECK(is_text(qor_double_to_str(2.5), "2.5"));
  CHECK(is_text(qor_format1_t("<{:>5}>", "s", name), "<  Ada>"));
  CHECK(qor_val("12.5") == 12.5);
  CHECK(qor_int(-2.5) == -2);
  CHECK(is_text(qor_regex_replace("[0-9]+", "a12", "#"), "a#"));
  CHECK(is_text(qor_base64_encode("foo"), "Zm9v"));
  CHECK(is_text(qor_typeof_tag(QOR_TAG_ARRAY), "ARRAY"));
  qor_array_free_deep(pieces);
}

static void check_objects(void) {
  QorMap* map = qor_map_new();
  QorRecord* record = qor_udt_new("POINT");
  qor_map_set_f64(map, "x", 1.5);
  qor_udt_set_f64(record, "x", 2.5);
  CHECK(map->count == 1);
  CHECK(is_text(qor_map_str(map), "{\"x\": 1.5}"));
  CHECK(qor_udt_get_f64(record, "x") == 2.5);
  qor_map_free(map);
  qor_udt_free(record);
}

static double scripted_tick(void* now) {
  return *(double*)now;
}
static void scripted_sleep(void* now, uint32_t milliseconds) {
  *(double*)now += milliseconds;
}

static void check_clock(void) {
  double now = 5000.0;
  const qor_clock clock = {scripted_tick, scripted_sleep, &now};
  qor_set_clock(&clock);
  qor_sleep(16);
  CHECK(qor_tick() == 5016.0);
  qor_set_clock(NULL);
}

static int events = 0;
static void count_event(QorArray* arguments) {
  events += (int)qor_array_len(arguments);
}

static void check_surroundings(void) {
  const int64_t values[] = {3, 4};
  qorrt_register_event_handler("MOUSEMOVE", count_event);
  qorrt_dispatch_event("MOUSEMOVE", values, NULL, 2);
  CHECK(events == 1);
  CHECK(qor_file_exists("/") == 1);
  CHECK(is_text(qor_txtreader("/does/not/exist"), ""));
  CHECK(is_text(qor_cvdate("2024-3-5"), "2024-03-05 00:00:00"));
  CHECK(qor_tick() > 0.0);
  check_clock();
  CHECK(qor_gcd(12, 18) == 6);
  CHECK(fabs(qor_sin(0.5) - sin(0.5)) == 0.0);
}

int main(void) {
  check_errors();
  check_arrays();
  check_text();
  check_objects();
  check_surroundings();
  if (failures == 0)
    puts("done");
  return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
