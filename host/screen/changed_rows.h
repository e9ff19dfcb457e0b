// Which rows of a picture are not what they were when it was shown last: of a picture that is
// drawn anew for every frame most rows come out the same.
#pragma once

#include <cstdint>
#include <vector>

#include "host/screen/canvas.h"

namespace kavo::host {

struct Rows {
  int first;
  int count;
};

class ChangedRows {
public:
  // The rows that differ from the picture of the last call, in order; all of them in one piece when
  // there is none to compare with. Pieces with hardly a row between them are one.
  const std::vector<Rows>& find(const Canvas& canvas);

  // Whether there is a picture to compare with.
  bool is_known() const { return !shown_.empty(); }

  // What was shown is shown no more.
  void forget() { shown_.clear(); }

private:
  void note(int row);

  std::vector<uint32_t> shown_; // that picture; empty: none
  std::vector<Rows> changed_;
};

} // namespace kavo::host
