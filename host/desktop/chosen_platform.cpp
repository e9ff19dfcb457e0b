// libqorrt.so is for the desktop.
#include "host/desktop/desktop_platform.h"

std::unique_ptr<kavo::host::Platform> kavo::host::make_platform() {
  return std::make_unique<DesktopPlatform>();
}
