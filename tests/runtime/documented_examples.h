/* What the examples of docs/runtime.md are run with. */
#pragma once

#include <stdio.h>
#include <string.h>

#include "runtime/qor.h"

static int failed_expectations = 0;

static inline void expect_at(int holds, int line) {
  if (!holds) {
    fprintf(stderr, "an example's expectation fails, line %d of the program\n", line);
    failed_expectations += 1;
  }
}

#define expect(condition) expect_at((condition) ? 1 : 0, __LINE__)
#define expect_text(s, text) expect_at(strcmp(s, text) == 0, __LINE__)

/* Functions that an example names. */
static inline double tick_of_script(void* now_ms) {
  return *(double*)now_ms;
}
static inline void sleep_of_script(void* now_ms, uint32_t milliseconds) {
  *(double*)now_ms += milliseconds;
}

/* The exit status. */
static inline int finish(int examples) {
  printf("%d examples, %d failed expectations\n", examples, failed_expectations);
  return failed_expectations == 0 ? 0 : 1;
}
