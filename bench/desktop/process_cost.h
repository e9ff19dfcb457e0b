// What another process has used so far, as the kernel counts it.
#pragma once

#include <sys/types.h>

namespace kavo::bench {

// Processor time in seconds: of all its threads, user and system together, and of the first thread
// alone. Both throw std::runtime_error when the process is gone.
double processor_seconds(pid_t process);
double main_thread_seconds(pid_t process);

// Of all processors since the machine started, whoever used them: the machine's host too, while it
// kept one from running.
double all_processor_seconds();

struct Memory {
  double resident_mb; // 1 MB = 1,000,000 bytes
  double private_mb;  // the part that it shares with no other process
};
Memory memory_of(pid_t process);

} // namespace kavo::bench
