/* What the compiler's C++ library expects of a C library that is younger than the oldest one that
   the archive is to run with. */
#include <stdint.h>
#include <stdlib.h>
#include <sys/random.h>

uint32_t arc4random(void);
extern char __libc_single_threaded;

/* "There may be another thread": the C++ library then counts references by atomic operations. */
char __libc_single_threaded = 0;

/* Small requests are never answered in part. */
uint32_t arc4random(void) {
  uint32_t number = 0;
  if (getrandom(&number, sizeof number, 0) != (ssize_t)sizeof number)
    abort();
  return number;
}
