// malloc for results that callers free themselves. Running out of memory ends the process with a
// message: nothing above this library could carry on.
#pragma once

#include <cstddef>

namespace qor {

void* allocate(size_t bytes);
void* allocate_many(size_t count, size_t size);
void* allocate_zeroed(size_t count, size_t size);

// Grows or shrinks a block of these; the old one is gone.
void* reallocate(void* block, size_t bytes);

} // namespace qor
