#!/usr/bin/env bash
# The library exports the thirteen operations and nothing else: exports_test.sh LIBRARY
set -euo pipefail
expected="qorrt_call_typed_arr qorrt_call_typed_f64 qorrt_clear_last_error qorrt_frame_begin \
qorrt_frame_end qorrt_init qorrt_last_error qorrt_register_binary qorrt_set_event_dispatcher \
qorrt_shutdown qorrt_strlen qorrt_val_to_f64 qorrt_val_to_str"
exported=$(nm -D --defined-only --format=posix "$1" | cut -d' ' -f1 | LC_ALL=C sort | xargs)
[ "$exported" = "$expected" ] || {
  echo "exported: $exported"
  exit 1
}
