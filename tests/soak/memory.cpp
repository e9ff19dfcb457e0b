#include "tests/soak/memory.h"

#include <unistd.h>

#include <fstream>

int64_t kavo::soak::resident_bytes() {
  int64_t all_pages = 0;
  int64_t resident_pages = 0;
  std::ifstream("/proc/self/statm") >> all_pages >> resident_pages;
  return resident_pages * sysconf(_SC_PAGESIZE);
}
