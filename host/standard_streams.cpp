#include "host/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

namespace kavo::host {

// The lowest free number is what open() gives.
void open_missing_standard_streams() {
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
    if (fcntl(stream, F_GETFD) == -1)
      static_cast<void>(open("/dev/null", O_RDWR)); // NOLINT(*-open-cloexec): they are inherited
}

} // namespace kavo::host
