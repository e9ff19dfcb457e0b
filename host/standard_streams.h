// The three streams that every program expects to have.
#pragma once

namespace kavo::host {

// Opens /dev/null for those of standard input, output and error that are closed. Otherwise the
// next file or window would get their numbers, and what is printed would end up in it.
void open_missing_standard_streams();

} // namespace kavo::host
