// What lies where a table of scores is to be.
#pragma once

#include <string>

namespace kavo::host {

struct TableFile {
  enum class Kind {
    missing,
    table,       // a file that can be read, no larger than a table may be
    no_table,    // something else, or far too much of it
    out_of_reach // nobody can tell, or what is there cannot be read: `error` says why
  };
  Kind kind = Kind::missing;
  std::string what = {}; // for no table: "a folder", "a pipe", …
  int error = 0;         // errno's
};

// Never blocks and changes nothing. A link counts as what it leads to; one that leads to nothing
// yet is missing, one that leads round is no table.
TableFile look_at_table(const std::string& path);

// Gives what lies there (a link itself, not what it leads to) a free name beside it that says that
// it is no table. That name; empty, with errno set, when it stays where it is.
std::string put_aside(const std::string& path);

} // namespace kavo::host
