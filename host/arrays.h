// The array commands. Arguments are only read and may be null (an empty array); results are new
// and share nothing with them. Each throws CommandError, naming the argument, when the arguments
// do not fit.
#pragma once

#include <string_view>

#include "host/elements.h"

namespace kavo::host {

// Rows become columns: element (i, j) of the result is element (j, i) of `matrix`, an array of
// rows of one length. No rows, or rows without elements, give an array without rows.
OwnedArray transposed(const QorArray* matrix);

// The numbers or texts of `values` (rows within it are read one after the other), repeated from
// the start until an array of these sizes is full: [n] gives a flat array, [rows, columns] an
// array of rows, and so on. Sizes are truncated toward zero.
OwnedArray reshaped(const QorArray* values, const QorArray* sizes);

// The rows of `rows` with `row` in front of the one at `position` (behind the last when position
// is their count).
OwnedArray with_row_inserted(const QorArray* rows, double position, double axis,
                             const QorArray* row);

// The parts of `text` between the separators, one more than there are separators.
OwnedArray split(std::string_view text, std::string_view separator);

} // namespace kavo::host
