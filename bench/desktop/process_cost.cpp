#include "bench/desktop/process_cost.h"

#include <unistd.h>

#include <ctime>
#include <fstream>
#include <stdexcept>
#include <string>

namespace kavo::bench {

namespace {

constexpr double bytes_per_mb = 1e6;
constexpr double bytes_per_kb = 1024; // what the kernel calls kB

std::ifstream open_proc(pid_t process, const std::string& name) {
  std::ifstream file("/proc/" + std::to_string(process) + name);
  if (!file)
    throw std::runtime_error("the process to be measured is gone");
  return file;
}

} // namespace

double processor_seconds(pid_t process) {
  clockid_t clock = 0;
  timespec used = {};
  if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &used) != 0)
    throw std::runtime_error("the process to be measured is gone");
  return static_cast<double>(used.tv_sec) + 1e-9 * static_cast<double>(used.tv_nsec);
}

double main_thread_seconds(pid_t process) {
  double nanoseconds = 0;
  open_proc(process, "/task/" + std::to_string(process) + "/schedstat") >> nanoseconds;
  return 1e-9 * nanoseconds;
}

double all_processor_seconds() {
  std::string word;
  double user = 0, nice = 0, system = 0, idle = 0, waiting = 0, interrupts = 0, soft = 0,
         stolen = 0;
  std::ifstream("/proc/stat") >> word >> user >> nice >> system >> idle >> waiting >> interrupts >>
      soft >> stolen;
  return (user + nice + system + interrupts + soft + stolen) /
         static_cast<double>(sysconf(_SC_CLK_TCK));
}

Memory memory_of(pid_t process) {
  std::ifstream file = open_proc(process, "/smaps_rollup");
  Memory memory = {};
  std::string line;
  std::getline(file, line); // the range of addresses
  double kilobytes = 0;
  for (std::string field; file >> field >> kilobytes; std::getline(file, line)) {
    const double mb = kilobytes * bytes_per_kb / bytes_per_mb;
    if (field == "Rss:")
      memory.resident_mb = mb;
    else if (field == "Private_Clean:" || field == "Private_Dirty:")
      memory.private_mb += mb;
  }
  return memory;
}

} // namespace kavo::bench
