// Prints how many allocations the busiest frame makes and how many of them outlive it, as the C
// library's own trace of its memory has them.
#include <mcheck.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "bench/storm.h"
#include "tests/fakes/recording_host.h"

namespace {

// The trace comes from a library of glibc's that has to be there when the program starts.
void start_again_with_trace(char** arguments) {
  setenv("LD_PRELOAD", "libc_malloc_debug.so.0", 1);
  execv("/proc/self/exe", arguments);
  std::perror("storm_allocations: cannot start again");
  std::exit(1);
}

void trace_one_frame(const std::string& file) {
  setenv("MALLOC_TRACE", file.c_str(), 1);
  kavo::bench::draw_storm_frame();
  kavo::bench::keep_storm_alive();
  mtrace();
  kavo::bench::draw_frame();
  muntrace();
}

struct Allocations {
  int64_t made = 0;
  int64_t freed = 0;
};

// Lines read "@ <caller> <sign> <address> …": + made, - freed, < and > moved from and to. The first
// and the last one are headings.
Allocations read(const std::string& file) {
  Allocations found;
  std::ifstream trace(file);
  for (std::string line; std::getline(trace, line);) {
    std::istringstream words(line);
    std::string at;
    std::string caller;
    char sign = 0;
    words >> at >> caller >> sign;
    found.made += static_cast<int64_t>(sign == '+' || sign == '>');
    found.freed += static_cast<int64_t>(sign == '-' || sign == '<');
  }
  return found;
}

} // namespace

int main(int, char** arguments) {
  if (std::getenv("LD_PRELOAD") == nullptr)
    start_again_with_trace(arguments);
  const std::string file =
      std::filesystem::temp_directory_path() / ("storm_allocations." + std::to_string(getpid()));
  kavo::bench::start_storm();
  kavo::test::recording_host().is_discarding = true;
  trace_one_frame(file);
  const Allocations found = read(file);
  std::filesystem::remove(file);
  std::cout << found.made << ' ' << found.made - found.freed << '\n';
}
