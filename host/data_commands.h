// Chance, arrays and files.
#pragma once

#include "host/command.h"

namespace kavo::host {

// RND number: a negative number seeds the generator afresh and returns 0; any other returns a
// number in [0, 1).
double random_number(Host& host, const Arguments& arguments);

// BINWRITER path, content
double write_binary_file(Host& host, const Arguments& arguments);

// TRANSPOSE matrix
QorArray* transpose_matrix(Host& host, const Arguments& arguments);

// RESHAPE values, sizes
QorArray* reshape_values(Host& host, const Arguments& arguments);

// MVINS rows, position, axis, row
QorArray* insert_row(Host& host, const Arguments& arguments);

// SPLIT text, separator
QorArray* split_text(Host& host, const Arguments& arguments);

// DIR$ path or pattern
QorArray* list_directory(Host& host, const Arguments& arguments);

} // namespace kavo::host
