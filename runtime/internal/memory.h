// malloc for results that callers free themselves. Running out of memory ends the process with a
// message: nothing above this library could carry on.
#pragma once

#include <cstddef>

namespace qor {

void* allocate(std::size_t bytes);
void* allocate_many(std::size_t count, std::size_t size);
void* allocate_zeroed(std::size_t count, std::size_t size);

// Grows or shrinks a block of these; the old one is gone.
void* reallocate(void* block, std::size_t bytes);

} // namespace qor
