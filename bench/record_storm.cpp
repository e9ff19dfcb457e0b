// Prints the drawing commands of the busiest frame as the recording host writes them down, a line
// each: record_storm <file>.
#include <fstream>
#include <iostream>

#include "bench/storm.h"
#include "tests/fakes/fake_clock.h"
#include "tests/fakes/recording_host.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: record_storm <file>\n";
    return 2;
  }
  kavo::test::fake_clock().now_ms = 20'000; // by then both clouds are in sight
  kavo::bench::start_storm();
  kavo::test::recording_host().forget();
  kavo::bench::draw_storm_frame();
  std::ofstream file(argv[1]);
  for (const auto& line : kavo::test::recording_host().trace)
    if (!line.starts_with("RND") && !line.starts_with("SCREENFLIP"))
      file << line << '\n';
  return file.flush() ? 0 : 1;
}
