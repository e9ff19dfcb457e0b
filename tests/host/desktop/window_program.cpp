// The smallest program with a window: it presents frame after frame until it is ended from
// outside.
#include <cstdio>

#include "tests/host/bridge.h"

int main() {
  kavo::test::Bridge bridge;
  bridge.send("SCREEN", 660, 800, "KAVO - Schlagseite", 1);
  for (;;) {
    const int64_t token = qorrt_frame_begin(bridge.handle());
    bridge.send("SCREENFLIP");
    std::fputs("f", stdout);
    qorrt_frame_end(bridge.handle(), token);
  }
}
