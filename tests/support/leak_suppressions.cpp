// For test binaries that open a window: what the desktop's own libraries keep until the process
// ends is not ours to free.
extern "C" {

const char* __lsan_default_suppressions() { // NOLINT(bugprone-reserved-identifier)
  return "leak:libdbus-1\nleak:libX11\nleak:libpulse\nleak:libxkbcommon\n";
}

const char* __lsan_default_options() { // NOLINT(bugprone-reserved-identifier)
  return "print_suppressions=0";
}
}
